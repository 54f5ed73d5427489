// Backups that the program makes by itself: when they are due, which are kept, what is in them.
#include <QDir>
#include <QRegularExpression>

#include "store/backup/VolumeReplacement.h"
#include "store/engine/StorageEngine.h"
#include "store/engine/StorageState.h"
#include "support/CatalogueTest.h"
#include "support/DataRows.h"
#include "support/Files.h"

using namespace Qt::StringLiterals;

namespace {
QDateTime Moment(const QString& text) {
    return QDateTime::fromString(text, u"yyyy-MM-dd HH:mm"_s);
}

/// "2026-05-31 07:30" or "2026-05-31 07:30=SIZE", separated by commas.
std::vector<CBackupFile> Backups(const char* list) {
    std::vector<CBackupFile> backups;
    for (const QString& text : QString::fromLatin1(list).split(u',', Qt::SkipEmptyParts)) {
        const QString moment = text.section(u'=', 0, 0);
        backups.push_back({moment, Moment(moment), text.section(u'=', 1).toLongLong()});
    }
    return backups;
}
}  // namespace

class TestBackups : public CCatalogueTest {
    Q_OBJECT

  private slots:
    // A zone with an hour that does not exist.
    void initTestCase() { qputenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3"); }
    void init() {
        MakeVolume();
        m_now = Moment(u"2026-05-31 07:30"_s);
        m_told.clear();
    }
    void cleanup() { DropVolume(); }

    void aBackupIsDueOnceADayAndAtMostOnceAnHour_data() {
        constexpr auto kFirst = EBackupOccasion::FirstChange;
        constexpr auto kLarge = EBackupOccasion::LargeChange;
        AddRows<const char*, EBackupOccasion, const char*, bool>({
            {"none yet", "", kFirst, "07:30", true},
            {"yesterday", "2026-05-30 07:31", kFirst, "07:30", true},
            {"today", "2026-05-31 00:10", kFirst, "07:30", false},
            {"today, import", "2026-05-31 06:30", kLarge, "07:30", true},
            {"within the hour", "2026-05-31 06:31", kLarge, "07:30", false},
            {"over midnight", "2026-05-30 23:50", kFirst, "00:49", false},
            {"over midnight, import", "2026-05-30 23:50", kLarge, "00:49", false},
            {"an hour over midnight", "2026-05-30 23:50", kFirst, "00:50", true},
            {"the clock was set back", "2026-05-31 08:29", kLarge, "07:30", false},
            {"dated ahead", "2026-06-02 07:00", kFirst, "07:30", true},
            {"dated ahead, and today", "2026-06-02 07:00,2026-05-31 01:00", kFirst, "07:30", false},
        });
    }
    void aBackupIsDueOnceADayAndAtMostOnceAnHour() {
        const auto& [backups, occasion, time, isDue] =
            DataRow<const char*, EBackupOccasion, const char*, bool>();
        const QDateTime now = Moment(u"2026-05-31 "_s + QLatin1StringView(time));
        QCOMPARE(IsBackupDue(Backups(backups), now, occasion), isDue);
    }

    void oldBackupsGo_data() {
        AddRows<const char*, qint64, const char*>({
            {"none", "", 1000, ""},
            // Sunday the 1st is the last of its week; Monday and Tuesday are not.
            {"seven, and a week",
             "2026-03-01 08:00,2026-03-02 08:00,2026-03-03 08:00,2026-03-04 08:00,2026-03-05 08:00,"
             "2026-03-06 08:00,2026-03-07 08:00,2026-03-08 08:00,2026-03-09 08:00,2026-03-10 08:00",
             1000, "2026-03-03 08:00,2026-03-02 08:00"},
            // Of a week until 91 days, of a month until 365.
            {"a quarter and a year",
             "2026-05-31 01:00,2026-05-31 02:00,2026-05-31 03:00,2026-05-31 04:00,2026-05-31 05:00,"
             "2026-05-31 06:00,2026-05-31 07:00,2026-05-31 00:00,2026-03-01 08:00,2026-02-28 08:00,"
             "2026-02-27 08:00,2026-02-20 08:00,2025-05-31 08:00,2025-05-30 08:00,2025-04-30 08:00",
             1000,
             "2026-05-31 00:00,2026-02-27 08:00,2026-02-20 08:00,2025-05-30 08:00,2025-04-30 "
             "08:00"},
            {"room for two", "2026-05-30 08:00=10,2026-05-29 08:00=10,2026-05-28 08:00=10", 25,
             "2026-05-28 08:00"},
            {"none is skipped", "2026-05-30 08:00=10,2026-05-29 08:00=90,2026-05-28 08:00=1", 25,
             "2026-05-29 08:00,2026-05-28 08:00"},
            {"the last one stays", "2026-05-30 08:00=99,2026-05-29 08:00=1", 25,
             "2026-05-29 08:00"},
            {"dated ahead", "2027-01-01 08:00=99,2026-05-30 08:00=99", 25, ""},
        });
    }
    void oldBackupsGo() {
        const auto& [backups, limit, removed] = DataRow<const char*, qint64, const char*>();
        QStringList paths;
        for (const CBackupFile& backup : BackupsToRemove(Backups(backups), m_now, limit)) {
            paths.append(backup.path);
        }
        QCOMPARE(paths.join(u','), QString::fromLatin1(removed));
    }

    void theLimitIsATenthOfWhatIsFree() {
        QCOMPARE(BackupLimit(0), 0);
        QCOMPARE(BackupLimit(50), 5);
        for (const qint64 muchOrNotKnown : {qint64{1} << 40, qint64{-1}}) {
            QCOMPARE(BackupLimit(muchOrNotKnown), qint64{2147483648});
        }
    }

    void theFirstChangeOfADayIsPrecededByABackup() {
        Start();
        AddCategory(Database(), u"Fruit"_s);  // nothing was stored before
        QVERIFY(!QFile::exists(Path(u"v.db-backups"_s)));
        m_now = m_now.addDays(1);
        AddCategory(Database(), u"Soups"_s);
        AddCategory(Database(), u"Bread"_s);
        QCOMPARE(Names(), u"v-2026-06-01-073000.db"_s);
        QCOMPARE(CategoriesIn(u"v-2026-06-01-073000.db"_s), 1);
        QCOMPARE(m_told, QStringList());
    }

    // Close to midnight the hour counts, so the day's backup comes later. A clock set back is
    // noticed.
    void theDaysBackupWaitsForTheHour_data() {
        AddRows<QString, QString>({
            {"midnight", u"2026-05-30 23:50,2026-05-31 00:30,2026-05-31 00:50"_s,
             u"v-2026-05-30-235000.db v-2026-05-31-005000.db"_s},
            {"set back", u"2030-01-01 00:00,2026-05-31 07:30"_s,
             u"v-2026-05-31-073000.db v-2030-01-01-000000.db"_s},
        });
    }
    void theDaysBackupWaitsForTheHour() {
        const auto& [moments, names] = DataRow<QString, QString>();
        AddCategory(Database(), u"Fruit"_s);
        Start();
        for (const QString& moment : moments.split(u',')) {
            m_now = Moment(moment);
            AddCategory(Database(), moment);
        }
        QCOMPARE(Names(), names);
    }

    // What others have left in the folder stays.
    void theVolumeMayHaveAnyName_data() {
        AddRows<QString>(
            {{"v", u"v"_s}, {"hidden", u".v"_s}, {"set", u"a[b]"_s}, {"any", u"a*"_s}});
    }
    void theVolumeMayHaveAnyName() {
        const auto& [name] = DataRow<QString>();
        AddCategory(Database(), u"Fruit"_s);
        CVolumeBackups backups(Database().GetStore().EngineState().file, Path(name + u".db"_s));
        Start(backups);
        QDir folder(backups.GetUsualFolder());
        QVERIFY(folder.mkpath(u"."_s));
        const QStringList others = {u"ab-2026-05-01-000000.db.part"_s,
                                    name + u"-2-2026-05-01-000000.db.part"_s,
                                    name + u"-notes.db"_s};
        for (const QString& other : others) {
            Save(folder.filePath(other), "other");
        }
        // In the hour that the clock skips, and what was not finished.
        const QString kept = name + u"-2026-03-29-023000.db"_s;
        Save(folder.filePath(kept), "kept");
        Save(folder.filePath(name + u"-2026-05-01-000000.db.part-1"_s), "half");
        backups.MakeIfDue(EBackupOccasion::LargeChange);
        m_now = m_now.addSecs(60);
        backups.MakeIfDue(EBackupOccasion::LargeChange);
        QCOMPARE(backups.List().size(), std::size_t{2});
        QStringList expected = others + QStringList{kept, name + u"-2026-05-31-073000.db"_s};
        expected.sort();
        QStringList found = folder.entryList(QDir::Files | QDir::Hidden);
        found.sort();
        QCOMPARE(found, expected);
    }

    void aFailedBackupIsToldOnceAndFailsNothing() {
        AddCategory(Database(), u"Fruit"_s);
        Save(Path(u"v.db-backups"_s), "a file");
        Start();
        AddCategory(Database(), u"Soups"_s);
        AddCategory(Database(), u"Bread"_s);
        QCOMPARE(Database().Categories().Count(), 3);
        QCOMPARE(m_told.join(u'|'),
                 u"No backup was made: '%1' cannot be written."_s.arg(Path(u"v.db-backups"_s)));
    }

    // Where others, such as a copy on a stick, may have theirs.
    void whatAKilledRestoreHasLeftIsRemoved() {
        m_doc.reset();
        const QString unfinished = CVolumeReplacement(Path(u"v.db"_s), m_now).GetNewPath();
        for (const QString& path : {unfinished, unfinished + u"-journal"_s, Path(u"v.db-new"_s)}) {
            Save(path, "a whole copy");
        }
        Reopen();
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden),
                 QStringList({u"v.db"_s, u"v.db-new"_s}));
    }

    // Those that are not kept anyway.
    void onAFullDiskOldBackupsMakeRoom() {
        AddCategory(Database(), u"Fruit"_s);
        Start();
        for (const bool hasOld : {false, true}) {
            for (int hour = 1; hasOld && hour <= 9; ++hour) {
                QVERIFY(QDir().mkpath(Path(u"v.db-backups"_s)));
                Save(Path(u"v.db-backups/v-2026-05-30-0%1.db"_s.arg(hour * 10000)), "old");
            }
            const CFileSizeLimit limit(20'000);
            Database().Backups().MakeIfDue(EBackupOccasion::FirstChange);
            QCOMPARE(QFile::exists(Path(u"v.db-backups"_s)), hasOld);
        }
        QCOMPARE(m_told.last(), u"No backup was made: there is no room for it in '%1'."_s.arg(
                                    Path(u"v.db-backups"_s)));
        QVERIFY(Names().startsWith(u"v-2026-05-30-030000.db"_s));
    }

    void backupsGoToTheFolderOfThePersonsChoice() {
        AddCategory(Database(), u"Fruit"_s);
        QVERIFY(Database().GetStore().WriteValue(0, kBackupFolderValue, Path(u"kept/here"_s)));
        Start();
        AddCategory(Database(), u"Soups"_s);
        const QDir folder(Path(u"kept/here"_s));
        QCOMPARE(folder.count(), 3U);  // with "." and ".."
        static const QRegularExpression kName(u"^v-[0-9a-f]{8}-2026-05-31-073000.db$"_s);
        QVERIFY(kName.match(folder.entryList(QDir::Files).first()).hasMatch());
        CVolumeBackups others(Database().GetStore().EngineState().file, Path(u"stick/v.db"_s));
        QCOMPARE(others.List().size(), std::size_t{0});
        Start(others);
        others.MakeIfDue(EBackupOccasion::FirstChange);
        QCOMPARE(folder.entryList(QDir::Files).size(), 2);
        QCOMPARE(others.List().size(), std::size_t{1});
        Database().Backups().Stop();
        m_now = m_now.addDays(1);
        AddCategory(Database(), u"Bread"_s);
        QCOMPARE(Database().Backups().List().size(), std::size_t{1});
    }

    // As after moving to another computer.
    void aChosenFolderThatCannotBeMadeIsReplaced() {
        AddCategory(Database(), u"Fruit"_s);
        QVERIFY(Database().GetStore().WriteValue(0, kBackupFolderValue, Path(u"v.db/kept"_s)));
        Start();
        AddCategory(Database(), u"Soups"_s);
        AddCategory(Database(), u"Bread"_s);
        QCOMPARE(Names(), u"v-2026-05-31-073000.db"_s);
        QCOMPARE(m_told.join(u'|'),
                 u"The folder '%1' cannot be written. A backup was made in '%2'."_s.arg(
                     Path(u"v.db/kept"_s), Path(u"v.db-backups"_s)));
    }

  private:
    void Start() { Start(Database().Backups()); }
    void Start(CVolumeBackups& backups) {
        backups.Start([this](const QString& text) { m_told.append(text); },
                      [this] { return m_now; });
    }
    QString Names() const {
        return QDir(Path(u"v.db-backups"_s)).entryList(QDir::Files, QDir::Name).join(u' ');
    }
    int CategoriesIn(const QString& name) const {
        CStorageEngine engine;
        CDatabaseInfo categories;
        int count = -1;
        const bool isRead = engine.Mount(Path(u"v.db-backups/"_s + name)) == kErrorSuccess &&
                            engine.FindDatabase(u"Categories"_s, categories) == kErrorSuccess &&
                            engine.CountRecords(categories.id, count) == kErrorSuccess;
        return isRead ? count : -1;
    }

    QDateTime m_now;
    QStringList m_told;
};

QTEST_GUILESS_MAIN(TestBackups)
#include "TestBackups.moc"

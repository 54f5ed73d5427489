// A backup in the volume's place, and what becomes of the volume.
#include <QDir>

#include "app/BackupRules.h"
#include "diary/DiaryFixture.h"
#include "platform/LateProgress.h"
#include "store/backup/Restore.h"
#include "store/engine/VolumeCopy.h"
#include "support/DataRows.h"

namespace {
const QDateTime kNow(QDate(2026, 5, 31), QTime(7, 30));
constexpr auto kKept = "v-kept-2026-05-31-073000.db"_L1;
}  // namespace

class TestRestore : public CDiaryTest {
    Q_OBJECT

  private slots:
    void init() {
        MakeDiary();
        AddCatalogue();
        AddEntry(u"Tea"_s, QTime(8, 0));
        QVERIFY(SaveBackup(Database(), Path(u"b.db"_s)));
        QCOMPARE(m_messages->Said(),
                 u"A backup was saved as '%1' and checked."_s.arg(Path(u"b.db"_s)));
        AddEntry(u"Egg"_s, QTime(9, 0));
        m_doc.reset();
        m_present = Load(Path(u"v.db"_s));
    }
    void cleanup() { DropVolume(); }

    void aDamagedVolumeIsNoBackup() {
        DamagePage(Path(u"v.db"_s));
        CSqliteFile file;
        QCOMPARE(file.Open(Path(u"v.db"_s)), int(kErrorSuccess));
        QCOMPARE(SaveVolumeCopy(file, Path(u"c.db"_s), EDamagedCopy::Removed), int(kErrorCorrupt));
        QCOMPARE(SaveVolumeCopy(file, Path(u"d.db"_s), EDamagedCopy::Kept,
                                [](qint64, qint64) { return false; }),
                 int(kErrorOperationAborted));
        QCOMPARE(Names(), u"b.db v.db"_s);
    }

    // The transcripts show what is asked and said, and a volume that was not there.
    void aBackupTakesThePlaceOfWhatALinkLeadsTo() {
        const QString path = Path(u"l.db"_s);
        QVERIFY(QFile::link(Path(u"v.db"_s), path));
        m_messages->answers = {false, false};
        for (const QString& refused : {path, Path(u"new/v.db"_s)}) {
            QVERIFY(!RestoreBackup(Path(u"b.db"_s), refused, kNow));
        }
        QVERIFY(!QFile::exists(Path(kKept)) && !QFile::exists(Path(u"new"_s)));
        QVERIFY(RestoreBackup(Path(u"b.db"_s), path, kNow));
        m_messages->TakeShown();
        QCOMPARE(Load(Path(kKept)), m_present);
        QVERIFY(QFileInfo(path).isSymLink());
        QVERIFY(CDatabase(path).Backups().GetUsualFolder().endsWith(u"/v.db-backups"_s));
        QCOMPARE(Entries(Path(u"v.db"_s)), 1);
        QCOMPARE(QDir(Path(u"v.db-backups"_s)).entryList(QDir::Files),
                 QStringList(u"v-2026-05-31-073000.db"_s));
    }

    void whatIsNoBackupIsRefused_data() {
        AddRows<QString>({
            {"damaged page", u"is damaged."_s},
            {"other pages", u"is damaged."_s},
            {"in use", u"is in use by another program."_s},
            {"cancelled", {}},
        });
    }
    void whatIsNoBackupIsRefused() {
        const auto& [text] = DataRow<QString>();
        const QByteArray fault = QTest::currentDataTag();
        const QString file = Path(u"f.db"_s);
        Save(file, Load(Path(u"b.db"_s)));
        CVolumeLock lock;
        if (fault == "damaged page") {
            DamagePage(file);
        } else if (fault == "other pages") {
            ChangeVolume(file, "PRAGMA page_size=16384; VACUUM");
        } else if (fault == "in use") {
            QCOMPARE(lock.Take(QFile::encodeName(file)), int(kErrorSuccess));
        }
        if (fault == "cancelled") {
            CRestore restore(file, Path(u"v.db"_s), kNow);
            QCOMPARE(restore.Begin([](qint64, qint64) { return false; }),
                     int(kErrorOperationAborted));
        } else {
            QVERIFY(!RestoreBackup(file, Path(u"v.db"_s), kNow));
            QCOMPARE(m_messages->Said(), u"The file '%1' %2"_s.arg(file, text));
        }
        QCOMPARE(Load(Path(u"v.db"_s)), m_present);
        QCOMPARE(Names(), u"b.db f.db v.db"_s);
    }

    void whatIsNotDamagedIsNotRepaired_data() {
        AddRows<bool, const char*>({
            {"newer version", true, "ERROR: CeMountDBVol failed (1150)|Cannot open database."},
            {"only to be read", false, "ERROR: CeMountDBVol failed (5)|Cannot open database."},
        });
    }
    void whatIsNotDamagedIsNotRepaired() {
        const auto& [isNewer, said] = DataRow<bool, const char*>();
        QByteArray present = m_present;
        present[63] = isNewer ? 2 : 1;
        Save(Path(u"v.db"_s), present);
        QVERIFY(QFile::setPermissions(Path(u"v.db"_s), isNewer ? kForAll : kToRead));
        CFindings findings;
        bool isChecked = true;
        bool isRepaired = true;
        AsAnybody(kForAll, [&] {
            isChecked = CheckFile(Path(u"v.db"_s), findings);
            isRepaired = RepairData(Path(u"v.db"_s), kNow);
        });
        QVERIFY(!isChecked && !isRepaired && findings.List().empty());
        QCOMPARE(m_messages->Said(), QLatin1StringView(said) + u'|' + QLatin1StringView(said));
        QCOMPARE(Load(Path(u"v.db"_s)), present);
        QCOMPARE(Names(), u"b.db v.db"_s);
    }

    // What cannot be opened is kept with its journal, which must not come near the backup.
    void aDamagedVolumeIsKeptWithItsJournal() {
        Save(Path(u"v.db"_s), "damaged");
        Save(Path(u"v.db-journal"_s), "its journal");
        QVERIFY(QFile::setPermissions(Path(u"v.db"_s), kToRead));
        Save(CVolumeReplacement(Path(u"v.db"_s), kNow).GetNewPath(), "left by a killed program");
        QVERIFY(RestoreBackup(Path(u"b.db"_s), Path(u"v.db"_s), kNow));
        m_messages->TakeShown();
        QCOMPARE(Names(), u"b.db %1 %1-journal v.db"_s.arg(kKept));
        QCOMPARE(Load(Path(kKept)), "damaged");
        QVERIFY(QFile::permissions(Path(u"v.db"_s)).testFlag(QFile::WriteOwner));
        QCOMPARE(Load(Path(kKept + u"-journal"_s)), "its journal");
        QCOMPARE(Entries(Path(u"v.db"_s)), 1);
        // A second one within the second has another name.
        QVERIFY(RestoreBackup(Path(kKept), Path(u"v.db"_s), kNow) == false);
        m_messages->TakeShown();
        QVERIFY(RestoreBackup(Path(u"b.db"_s), Path(u"v.db"_s), kNow));
        m_messages->TakeShown();
        QVERIFY(QFile::exists(Path(u"v-kept-2026-05-31-073000-2.db"_s)));
    }

    // A backup as a file manager copies it: with the journal of a program that was killed.
    void aJournalOfTheBackupIsPlayedIntoTheCopy() {
        CopyInterrupted(Path(u"b.db"_s), Path(u"f.db"_s));
        QVERIFY(Load(Path(u"f.db"_s)) != Load(Path(u"b.db"_s)));
        QVERIFY(RestoreBackup(Path(u"f.db"_s), Path(u"v.db"_s), kNow));
        m_messages->TakeShown();
        QCOMPARE(Entries(Path(u"v.db"_s)), 1);
        CFindings findings;
        QVERIFY(CheckFile(Path(u"v.db"_s), findings));
        QVERIFY(findings.List().empty());
        QVERIFY(QFile::exists(Path(u"f.db-journal"_s)));
        // One that is not the backup's is left out.
        Save(Path(u"b.db-journal"_s), "of another file");
        Save(Path(u"v.db-journal"_s), "of another file");
        QVERIFY(RestoreBackup(Path(u"b.db"_s), Path(u"v.db"_s), kNow.addSecs(1)));
        QVERIFY(
            m_messages->Said().startsWith(u"The journal beside the file '%1' does not belong to "
                                          "it and was not used."_s.arg(Path(u"v.db"_s))));
        QCOMPARE(QDir(m_folder->path()).entryList({u"v.db-*"_s}, QDir::Files),
                 QStringList(u"v.db-journal.kept-1"_s));
        QCOMPARE(Entries(Path(u"v.db"_s)), 1);
    }

    // Where files can be replaced but not listed, nothing can be synced.
    void aFolderThatCannotBeListedNeedsNoSync() {
        EPlatformError error = kErrorCorrupt;
        AsAnybody(kToWrite, [&] { error = SyncFolderOf(QFile::encodeName(Path(u"v.db"_s))); });
        QCOMPARE(error, int(kErrorSuccess));
    }

    void anEntryWithoutADateHidesNoDays() {
        Reopen();
        QVERIFY(m_doc->LoadProfile(u"Ann"_s));
        CDietEntry entry = MakeEntry<CDietEntry>(kDay, QTime(7, 0));
        entry.SetMoment(-1);
        QVERIFY(Database().Diet().Write(-1, entry));
        QVERIFY(SaveBackup(Database(), Path(u"b.db"_s)));
        m_doc.reset();
        CRestore restore(Path(u"b.db"_s), Path(u"v.db"_s), kNow);
        QCOMPARE(restore.Begin(), int(kErrorSuccess));
        QVERIFY(SummaryText(restore.GetSummary()).contains(u"2026-05-31 to 2026-05-31"_s));
        m_messages->TakeShown();
    }

    void aCancelledBackupCancelsTheRestore() {
        CProgressLog& progress = m_messages->progress;
        progress.onPump = [&] {
            progress.cancelAfterPumps = progress.captions.last() == u"Velmora: Backup"_s ? 0 : -1;
        };
        const auto delay = std::exchange(CLateProgress::delayMs, -1);
        QVERIFY(!RestoreBackup(Path(u"b.db"_s), Path(u"v.db"_s), kNow));
        CLateProgress::delayMs = delay;
        QCOMPARE(m_messages->Said(), u"Nothing was restored: it was cancelled."_s);
        QCOMPARE(Load(Path(u"v.db"_s)), m_present);
    }

    void whereTheVolumeCannotBeIsNotTheBackupsFault_data() {
        AddRows<const char*, const char*>({
            {"folder that cannot be made", "b.db/new/v.db", "5"},
            {"link to nothing", "link.db", "2"},
            {"in use, though empty", "held.db", "32"},
            {"no room", "v.db", "112"},
        });
    }
    void whereTheVolumeCannotBeIsNotTheBackupsFault() {
        const auto& [name, error] = DataRow<const char*, const char*>();
        QVERIFY(QFile::link(Path(u"gone/v.db"_s), Path(u"link.db"_s)));
        {
            CVolumeReplacement other(Path(u"held.db"_s), kNow);
            QCOMPARE(other.Begin(), int(kErrorSuccess));
            Save(other.GetNewPath(), "its new file");
            const CFileSizeLimit limit(20000);
            QVERIFY(!RestoreBackup(Path(u"b.db"_s), Path(QString::fromLatin1(name)), kNow));
            QVERIFY(QFile::exists(other.GetNewPath()));
        }
        QCOMPARE(m_messages->Said(), u"ERROR: CeMountDBVol failed (%1)|Cannot open database."_s.arg(
                                         QLatin1StringView(error)));
        QVERIFY(QFileInfo(Path(u"link.db"_s)).isSymLink());
        QCOMPARE(Load(Path(u"v.db"_s)), m_present);
        QCOMPARE(Names(), u"b.db v.db"_s);
    }

  private:
    static constexpr auto kForAll = QFile::Permissions(0x5777);
    static constexpr auto kToRead = QFile::Permissions(0x5555);
    static constexpr auto kToWrite = QFile::Permissions(0x3333);

    void AsAnybody(QFile::Permissions ofFolder, const std::function<void()>& run) {
        const auto before = QFile::permissions(m_folder->path());
        QVERIFY(QFile::setPermissions(m_folder->path(), ofFolder));
        AsNobody(run);
        QVERIFY(QFile::setPermissions(m_folder->path(), before));
    }
    QString Names() const {
        return QDir(m_folder->path()).entryList({u"*db*"_s}, QDir::Files, QDir::Name).join(u' ');
    }
    /// Of Ann's diet diary.
    static int Entries(const QString& path) {
        CVelmoraDoc doc(path);
        return doc.OpenCatalogue() && doc.LoadProfile(u"Ann"_s) ? doc.Database().Diet().Count()
                                                                : -1;
    }

    QByteArray m_present;
};

QTEST_GUILESS_MAIN(TestRestore)
#include "TestRestore.moc"

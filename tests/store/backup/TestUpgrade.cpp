// A volume of an older version, by a program whose version is one later than ours. As
// "TestUpgrade --upgrade FILE" it is that program, which scripts/upgrade_trial.py kills.
#include <QDir>
#include <QRegularExpression>

#include "platform/LateProgress.h"
#include "store/RecordStore.h"
#include "store/backup/Restore.h"
#include "store/engine/StorageState.h"
#include "support/CatalogueTest.h"
#include "support/DataRows.h"

using namespace Qt::StringLiterals;

namespace {
EPlatformError AddTable(CSqliteFile& file) {
    return file.Execute(
        "CREATE TABLE added(id INTEGER PRIMARY KEY, body BLOB NOT NULL);"
        "INSERT INTO added SELECT id, body FROM records");
}

EPlatformError AddTableAndFail(CSqliteFile& file) {
    (void)AddTable(file);
    return kErrorCorrupt;
}

constexpr UpgradeStep kSteps[] = {AddTable};
constexpr UpgradeStep kFailingSteps[] = {AddTable, AddTableAndFail};
constexpr qsizetype kVersionAt = 63;
}  // namespace

class TestUpgrade : public CCatalogueTest {
    Q_OBJECT

  private slots:
    void init() {
        MakeVolume();
        AddCategory(Database(), u"Fruit"_s);
        m_doc.reset();
        m_before = Load(Path(u"v.db"_s));
    }
    void cleanup() { DropVolume(); }

    void theUpgradedCopyTakesTheVolumesPlace() {
        CRecordStore store;
        QVERIFY(store.MountVolume(Path(u"v.db"_s), kSteps));
        const QStringList kept = QDir(m_folder->path()).entryList({u"v-kept-*.db"_s});
        QCOMPARE(m_messages->Said(),
                 u"Your data was brought up to date. The former file is kept as '%1'."_s.arg(
                     Path(kept.value(0))));
        QCOMPARE(Load(Path(kept.value(0))), m_before);
        CDatabaseHandle categories = store.OpenDatabase(u"Categories"_s, 0, 0, true);
        QCOMPARE(store.CountRecords(categories), 1);
        std::vector<QString> tables;
        QCOMPARE(store.EngineState().file.ListTables(u"added", tables), int(kErrorSuccess));
        QCOMPARE(tables.size(), std::size_t{1});
        QVERIFY(store.UnmountVolume());
        QVERIFY(store.MountVolume(Path(u"v.db"_s), kSteps));
        QCOMPARE(Names(), kept + QStringList{u"v.db"_s});
        QVERIFY(store.UnmountVolume());
        // The backup made before is of the older version.
        const QDir folder(Path(u"v.db-backups"_s));
        const QString backup = folder.filePath(folder.entryList(QDir::Files).value(0));
        QCOMPARE(Load(backup).at(kVersionAt), 1);
        CRestore restore(backup, Path(u"v.db"_s), QDateTime::currentDateTime(), kSteps);
        QCOMPARE(restore.Begin(), int(kErrorSuccess));
        QCOMPARE(restore.Commit(), int(kErrorSuccess));
        QVERIFY(store.MountVolume(Path(u"v.db"_s), kSteps));
        QCOMPARE(store.EngineState().file.ListTables(u"added", tables), int(kErrorSuccess));
        QCOMPARE(tables.size(), std::size_t{1});
        // Within the hour no other one is made, whose progress window would be the last one.
        QVERIFY(store.UnmountVolume());
        Save(Path(u"v.db"_s), m_before);
        const auto delay = std::exchange(CLateProgress::delayMs, -1);
        QVERIFY(store.MountVolume(Path(u"v.db"_s), kSteps));
        CLateProgress::delayMs = delay;
        QCOMPARE(m_messages->TakeShown().size(), 1);
        QCOMPARE(m_messages->shownOverProgress, 0);
        // This program is the older one now.
        QVERIFY(store.UnmountVolume());
        QVERIFY(!store.MountVolume(Path(u"v.db"_s)));
        QCOMPARE(m_messages->Said(), u"ERROR: CeMountDBVol failed (1150)"_s);
    }

    // The interrupted unit of work is undone in the upgraded one, too.
    void aJournalOfTheVolumeIsPlayedIntoTheCopy() {
        CopyInterrupted(Path(u"v.db"_s), Path(u"w.db"_s));
        QVERIFY(Load(Path(u"w.db"_s)) != m_before);
        CRecordStore store;
        QVERIFY(store.MountVolume(Path(u"w.db"_s), kSteps));
        m_messages->TakeShown();
        QCOMPARE(store.EngineState().file.CheckIntegrity(), int(kErrorSuccess));
        CDatabaseHandle categories = store.OpenDatabase(u"Categories"_s, 0, 0, true);
        PropertyList properties;
        QVERIFY(store.ReadCurrent(categories, properties));
        QCOMPARE(QDir(m_folder->path()).entryList({u"w-kept-*"_s}).size(), 2);
        QVERIFY(!QFile::exists(Path(u"w.db-journal"_s)));
    }

    void aFailedUpgradeLeavesEverythingAsItWas_data() {
        AddRows<const char*, const char*>({
            {"a step", "step", "ERROR: CeMountDBVol failed (1392)"},
            {"full disk", "full", "ERROR: CeMountDBVol failed (112)"},
            {"damaged", "damaged", "ERROR: CeMountDBVol failed (1392)"},
            {"version 0", "zero", "ERROR: CeMountDBVol failed (11)"},
            {"cancelled", "cancelled", "ERROR: CeMountDBVol failed (995)"},
        });
    }
    void aFailedUpgradeLeavesEverythingAsItWas() {
        const auto& [fault, text] = DataRow<const char*, const char*>();
        const QByteArray kind = fault;
        m_before[kVersionAt] = kind == "zero" ? 0 : 1;
        Save(Path(u"v.db"_s), m_before);
        if (kind == "damaged") {
            DamagePage(Path(u"v.db"_s));
            m_before = Load(Path(u"v.db"_s));
        }
        {
            std::optional<CFileSizeLimit> limit;
            if (kind == "full") {
                limit.emplace(20'000);
            }
            const auto delay =
                std::exchange(CLateProgress::delayMs, kind == "cancelled" ? -1 : 1000);
            m_messages->progress.cancelAfterPumps = 2;  // in the backup
            CRecordStore store;
            QVERIFY(!store.MountVolume(
                Path(u"v.db"_s),
                kind == "step" ? std::span<const UpgradeStep>(kFailingSteps) : kSteps));
            CLateProgress::delayMs = delay;
        }
        QCOMPARE(m_messages->Said(), QString::fromLatin1(text));
        QCOMPARE(Load(Path(u"v.db"_s)), m_before);
        QCOMPARE(Names(), QStringList(u"v.db"_s));
    }

  private:
    QStringList Names() const {
        return QDir(m_folder->path()).entryList({u"v*"_s}, QDir::Files, QDir::Name);
    }

    QByteArray m_before;
};

int main(int argc, char* argv[]) {
    QCoreApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    if (words.value(1) == u"--upgrade"_s) {
        CRecordingMessages messages;
        return CRecordStore().MountVolume(words.value(2), kSteps) ? 0 : 1;
    }
    TestUpgrade test;
    return QTest::qExec(&test, argc, argv);
}

#include "TestUpgrade.moc"

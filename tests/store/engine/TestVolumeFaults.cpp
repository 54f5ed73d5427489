// Volumes that are damaged, foreign or not ours alone.

#include "store/engine/EngineFixture.h"
#include "store/engine/History.h"
#include "store/engine/NamedValues.h"
#include "support/DataRows.h"

#include <QProcess>
#include <QRandomGenerator>

using namespace Qt::StringLiterals;

namespace {
/// Everything a reader could do to a volume, and a write and a deletion in each database. Returns
/// how many records were read.
int WalkEverything(CStorageEngine& engine) {
    int read = 0;
    std::vector<CDatabaseInfo> databases;
    (void)engine.ListDatabases(0, databases);
    CHistory history(engine.State());
    engine.AddListener(&history);
    for (const CDatabaseInfo& database : databases) {
        history.Watch(database.id, kCatalogueScope);
    }
    EPlatformError error = kErrorSuccess;
    for (int i = 0; i < 3 && history.NextUndo(); ++i) {
        if (history.Revert(*history.NextUndo(), error) != EReverted::Done) {
            break;
        }
    }
    (void)engine.BeginGroup();
    for (const CDatabaseInfo& database : databases) {
        const int count = CountOf(engine, database.id);
        ObjectId record = 0;
        qint64 key = 0;
        int bound = 0;
        PropertyList properties;
        for (int position = 0; position < count; ++position) {
            (void)engine.KeyAt(database.id, position, key);
            (void)engine.LowerBound(database.id, key, bound);
            if (engine.SeekToPosition(database.id, position, record) == kErrorSuccess &&
                engine.ReadRecord(record, properties) == kErrorSuccess) {
                ++read;
            }
        }
        (void)engine.DeleteRecord(database.id, record);
        Added(engine, database.id, Numbered(3));
    }
    (void)engine.EndGroup();
    (void)engine.Unmount();
    engine.RemoveListener(&history);
    return read;
}
}  // namespace

class TestVolumeFaults : public CEngineTest {
    Q_OBJECT

  private slots:
    void init() { MakeVolume(); }
    void cleanup() { m_engine.reset(); }

    // The file is released at once: the next mount gets the same error.
    void aVolumeWithoutATableIsRefused() {
        for (const char* table : {"databases", "records", "blocks"}) {
            init();
            Change(u"DROP TABLE "_s + QLatin1StringView(table));
            for (int i = 0; i < 2; ++i) {
                QCOMPARE(m_engine->Mount(m_path), int(kErrorCorrupt));
            }
        }
    }

    void aForeignTableOfValuesIsDamage() {
        Change("CREATE TABLE named_values(x)");
        QCOMPARE(m_engine->Mount(m_path), kOk);
        CNamedValues values(m_engine->State());
        std::optional<QString> value = u"z"_s;
        QCOMPARE(values.Read(0, u"a"_s, value), int(kErrorCorrupt));
        QVERIFY(!value);
        QCOMPARE(values.Write(0, u"a"_s, u"b"_s), int(kErrorCorrupt));
        QCOMPARE(values.DeleteOwner(1), int(kErrorCorrupt));
        ObjectId record = 0;
        QCOMPARE(m_engine->AddRecord(m_database, Numbered(1), record), int(kErrorCorrupt));
    }

    // A journal whose transaction has ended begins with zeros.
    void halfAPageIsDamageUnlessAJournalIsPlayed() {
        QCOMPARE(m_engine->Unmount(), kOk);
        const QByteArray volume = Load(m_path);
        for (const int more : {0, 100}) {
            Save(m_path, volume + QByteArray(more, '\0'));
            Save(m_path + u"-journal"_s, QByteArray(512, '\0'));
            QCOMPARE(m_engine->Mount(m_path), more == 0 ? kOk : int(kErrorCorrupt));
            QCOMPARE(m_engine->Unmount(), kOk);
        }
    }

    // Nor is a journal played that is not the volume's, where it cannot be renamed.
    void aVolumeThatCannotBeWrittenIsRefused() {
        QCOMPARE(m_engine->Unmount(), kOk);
        constexpr auto kAll = QFile::Permissions(0x5777);
        constexpr auto kReading = QFile::Permissions(0x5555);
        const QString journal = m_path + u"-journal"_s;
        for (const bool isFolder : {false, true}) {
            Save(journal, isFolder ? "Buy apples" : "");
            QVERIFY(QFile::setPermissions(journal, kAll));
            QVERIFY(QFile::setPermissions(m_path, isFolder ? kAll : kReading));
            QVERIFY(QFile::setPermissions(m_folder->path(), isFolder ? kReading : kAll));
            EPlatformError error = kErrorSuccess;
            AsNobody([&] { error = m_engine->Mount(m_path); });
            QCOMPARE(error, int(kErrorAccessDenied));
            QVERIFY(!m_engine->IsMounted());
        }
        QVERIFY(QFile::setPermissions(m_folder->path(), kAll) && QFile::remove(journal));
    }

    void whatAForeignProgramLeftInTheFileIsNotTrusted() {
        Change("CREATE TRIGGER t AFTER INSERT ON records BEGIN DELETE FROM records; END");
        QCOMPARE(m_engine->Mount(m_path), kOk);
        QVERIFY(Added(*m_engine, m_database, Numbered(1)) != 0);
        PropertyList read;
        QCOMPARE(m_engine->ReadRecord(1, read), kOk);
        // A record whose first value is an empty text, beside one with a key.
        QVERIFY(Added(*m_engine, m_database, Numbered(0)) != 0);
        Change("UPDATE records SET body=x'01009F' WHERE id=1");
        QCOMPARE(m_engine->Mount(m_path), kOk);
        int position = 0;
        QCOMPARE(m_engine->FindRecord(m_database, 1, position), int(kErrorCorrupt));
    }

    // Three blocks with keys 0 to 489, 490 to 979, and 980 to 989.
    void blocksThatContradictThemselvesAreDamage_data() {
        constexpr bool kAtOnce = true;
        constexpr bool kWhenRead = false;
        AddRows<const char*, bool>({
            {"empty block", "count=0 WHERE firstKey=0", kAtOnce},
            {"block too large", "count=491 WHERE firstKey=0", kAtOnce},
            {"no ordinal", "ordinal=0 WHERE firstKey=0", kAtOnce},
            {"ordinal too large", "ordinal=1<<62 WHERE firstKey=980", kAtOnce},
            {"equal ordinals", "ordinal=1<<32", kAtOnce},
            {"keys out of order", "firstKey=-1 WHERE firstKey=980", kAtOnce},
            {"count too small", "count=489 WHERE firstKey=490", kWhenRead},
            {"another first key", "firstKey=491 WHERE firstKey=490", kWhenRead},
            {"keys past the next block", "firstKey=978 WHERE firstKey=980", kWhenRead},
            {"entry cut off", "entries=substr(entries, 1, 7839) WHERE firstKey=490", kWhenRead},
            {"no entries", "entries=x'' WHERE firstKey=490", kWhenRead},
            {"unsorted",
             "entries=substr(entries, 1, 16) || substr(entries, 33, 16) || substr(entries, 17, 16) "
             "|| substr(entries, 49) WHERE firstKey=490",
             kWhenRead},
            {"no record",
             "entries=substr(entries, 1, 7832) || x'0000000000000000' WHERE firstKey=490",
             kWhenRead},
        });
    }

    void blocksThatContradictThemselvesAreDamage() {
        const auto& [change, isSeenAtOnce] = DataRow<const char*, bool>();
        QVERIFY(AddMany(*m_engine, m_database, 0, 1, 990));
        Change(u"UPDATE blocks SET "_s + QLatin1StringView(change));
        QCOMPARE(m_engine->Mount(m_path), kOk);
        int count = 0;
        ObjectId record = 0;
        const int first = isSeenAtOnce ? int(kErrorCorrupt) : kOk;
        QCOMPARE(m_engine->CountRecords(m_database, count), first);
        QCOMPARE(m_engine->SeekToPosition(m_database, 489, record), first);
        QCOMPARE(m_engine->SeekToPosition(m_database, 490, record), int(kErrorCorrupt));
        qint64 key = 0;
        QCOMPARE(m_engine->KeyAt(m_database, 490, key), int(kErrorCorrupt));
        QCOMPARE(m_engine->LowerBound(m_database, 700, count), int(kErrorCorrupt));
        QCOMPARE(m_engine->AddRecord(m_database, Numbered(700), record), int(kErrorCorrupt));
        QCOMPARE(m_engine->DeleteDatabase(m_database), kOk);
        QCOMPARE(CountOf(*m_engine, m_database), -1);
    }

    void anotherReaderInTheProcessLeavesTheLock() {
        const QString link = m_folder->filePath(u"link.db"_s);
        QVERIFY(QFile::link(u"target.db"_s, link));  // which is not there yet
        QCOMPARE(m_engine->Unmount(), kOk);
        for (const QString& path : {m_path, link}) {
            CStorageEngine engine;
            QCOMPARE(engine.Mount(path), kOk);
            Load(path);  // closing the file gives up every POSIX lock of the process on it
            const QStringList write = {u"--volume"_s, path,        u"categories"_s, u"add"_s,
                                       u"A"_s,        u"--kind"_s, u"foods"_s};
            QCOMPARE(QProcess::execute(QStringLiteral(VELMORA_CLI), write), 1);
            QCOMPARE(engine.Unmount(), kOk);
            QCOMPARE(QProcess::execute(QStringLiteral(VELMORA_CLI), write), 0);
        }
    }

    void damageNeverCrashes() {
        const QByteArray volume = SmallVolume();
        int read = 0;
        QRandomGenerator random(7);
        std::array<int, 3> mounted{};
        constexpr int kRounds = 150;  // of each kind
        for (int round = 0; round < 3 * kRounds; ++round) {
            QByteArray damaged = volume;
            // Every other round hits the header and the schema.
            const qsizetype end = round % 2 == 0 ? kVolumePage : volume.size();
            const int kind = round % 3;
            if (kind == 0) {
                for (int i = random.bounded(1, 9); i > 0; --i) {
                    const int place = random.bounded(int(end));
                    damaged[place] = static_cast<char>(damaged[place] ^ (1 << random.bounded(8)));
                }
            } else if (kind == 1) {
                std::fill_n(damaged.begin() + random.bounded(int(end) - 64), 64, '\0');
            } else {
                damaged.truncate(random.bounded(int(end)));
            }
            Save(m_path, damaged);
            CStorageEngine engine;
            if (engine.Mount(m_path) == kErrorSuccess) {
                ++mounted.at(kind);
                read += WalkEverything(engine);
            } else {
                QCOMPARE(Load(m_path), damaged);
                QVERIFY(!QFile::exists(m_path + u"-journal"_s));
            }
            (void)engine.Unmount();
            QFile::remove(m_path + u"-journal"_s);
        }
        QVERIFY(mounted[0] > 0 && mounted[0] < kRounds && mounted[1] > 0 && mounted[1] < kRounds);
        QCOMPARE(mounted[2], 0);
        // The damage mostly does not keep the other records from being found.
        QVERIFY(read > (mounted[0] + mounted[1]) * kRecords / 2);
    }

  private:
    static constexpr int kRecords = 400 + 20 - 40;

    // 400 numbers, of which 40 are deleted, and a database with pictures, with a history, in a file
    // of some 150 KB.
    QByteArray SmallVolume() {
        CStorageEngine& engine = *m_engine;
        const ObjectId pictures = Created(engine, u"Pictures"_s, 1);
        CHistory history(engine.State());
        engine.AddListener(&history);
        history.Watch(m_database, kCatalogueScope);
        history.Watch(pictures, kCatalogueScope);
        (void)engine.BeginGroup();
        for (int i = 0; i < 400; ++i) {
            Added(engine, m_database, Numbered(i));
            if (i % 20 == 0) {
                Added(engine, pictures,
                      {qint32{i}, QByteArray(1500, 'p'), 0.5, qint64{1}, qint16{2}});
            }
        }
        (void)engine.EndGroup();
        for (int i = 0; i < 40; ++i) {
            ObjectId record = 0;
            (void)engine.SeekToPosition(m_database, 3 * i, record);
            (void)engine.DeleteRecord(m_database, record);
        }
        (void)engine.Unmount();
        engine.RemoveListener(&history);
        return Load(m_path);
    }
};

QTEST_GUILESS_MAIN(TestVolumeFaults)
#include "TestVolumeFaults.moc"

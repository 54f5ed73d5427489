// Damaged files.

#include "store/engine/EngineSteps.h"
#include "store/engine/History.h"
#include "store/engine/RecordCodec.h"
#include "support/Files.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <map>

using namespace Qt::StringLiterals;

namespace {
constexpr int kPageBytes = 8192;

struct CStored {
    PropertyList properties;
    qsizetype page = 0;  ///< of the file
};
using StoredRecords = std::map<ObjectId, CStored>;

/// Everything a reader could do to a volume, and a write and a deletion in each database. Returns
/// how many records were as stored, or -1 when one of `intact` was read and was not.
int WalkEverything(CStorageEngine& engine, const StoredRecords& intact) {
    int same = 0;
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
            const bool isRead =
                engine.SeekToPosition(database.id, position, record) == kErrorSuccess &&
                engine.ReadRecord(record, properties) == kErrorSuccess;
            const auto stored = intact.find(record);
            if (isRead && stored != intact.end() && same >= 0) {
                same = properties == stored->second.properties ? same + 1 : -1;
            }
        }
        (void)engine.DeleteRecord(database.id, record);
        Added(engine, database.id, Numbered(3));
    }
    (void)engine.EndGroup();
    (void)engine.Unmount();
    engine.RemoveListener(&history);
    return same;
}
}  // namespace

class TestVolumeFaults : public QObject {
    Q_OBJECT

  private slots:
    void init() {
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath(u"volume.db"_s);
    }

    void anotherReaderInTheProcessLeavesTheLock() {
        for (const bool isLink : {false, true}) {
            init();
            QVERIFY(!isLink || QFile::link(u"target.db"_s, m_path));  // which is not there yet
            CStorageEngine engine;
            QCOMPARE(engine.Mount(m_path), kOk);
            Load(m_path);  // closing the file gives up every POSIX lock of the process on it
            const QStringList write = {u"--volume"_s, m_path,      u"categories"_s, u"add"_s,
                                       u"A"_s,        u"--kind"_s, u"foods"_s};
            QCOMPARE(QProcess::execute(QStringLiteral(VELMORA_CLI), write), 1);
            QCOMPARE(engine.Unmount(), kOk);
            QCOMPARE(QProcess::execute(QStringLiteral(VELMORA_CLI), write), 0);
        }
    }

    void damageNeverCrashes() {
        StoredRecords stored;
        const QByteArray volume = SmallVolume(stored);
        QVERIFY(stored.size() > 300);
        int same = 0;
        QRandomGenerator random(7);
        std::array<int, 3> mounted{};
        constexpr int kRounds = 150;  // of each kind
        for (int round = 0; round < 3 * kRounds; ++round) {
            QByteArray damaged = volume;
            // Every other round hits the header and the schema.
            const int end = round % 2 == 0 ? kPageBytes : static_cast<int>(volume.size());
            const int kind = round % 3;
            if (kind == 0) {
                for (int i = random.bounded(1, 9); i > 0; --i) {
                    const int place = random.bounded(end);
                    damaged[place] = static_cast<char>(damaged[place] ^ (1 << random.bounded(8)));
                }
            } else if (kind == 1) {
                std::fill_n(damaged.begin() + random.bounded(end - 64), 64, '\0');
            } else {
                damaged.truncate(random.bounded(end));
            }
            Save(m_path, damaged);
            CStorageEngine engine;
            if (engine.Mount(m_path) == kErrorSuccess) {
                ++mounted.at(kind);
                StoredRecords intact = stored;
                std::erase_if(intact, [&](const auto& each) {
                    const qsizetype page = each.second.page * kPageBytes;
                    return volume.mid(page, kPageBytes) != damaged.mid(page, kPageBytes);
                });
                const int count = WalkEverything(engine, intact);
                QVERIFY(count >= 0);
                same += count;
            } else {
                QCOMPARE(Load(m_path), damaged);
                QVERIFY(!QFile::exists(m_path + u"-journal"_s));
            }
            (void)engine.Unmount();
            QFile::remove(m_path + u"-journal"_s);
        }
        QVERIFY(mounted[0] > 0 && mounted[0] < kRounds && mounted[1] > 0 && mounted[1] < kRounds);
        QCOMPARE(mounted[2], 0);
        // Most records are on other pages than the damage, which mostly does not keep them from
        // being found.
        QVERIFY(same > (mounted[0] + mounted[1]) * static_cast<int>(stored.size()) / 2);
    }

  private:
    // 400 numbers and a database with pictures, with a history, in a file of some 150 KB. `stored`
    // are the records that are in one place of the file only.
    QByteArray SmallVolume(StoredRecords& stored) {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"volume.db"_s);
        CStorageEngine engine;
        (void)engine.Mount(path);
        const ObjectId numbers = Created(engine, u"Numbers"_s);
        const ObjectId pictures = Created(engine, u"Pictures"_s, 1);
        CHistory history(engine.State());
        engine.AddListener(&history);
        history.Watch(numbers, kCatalogueScope);
        history.Watch(pictures, kCatalogueScope);
        (void)engine.BeginGroup();
        for (int i = 0; i < 400; ++i) {
            Added(engine, numbers, Numbered(i));
            if (i % 20 == 0) {
                Added(engine, pictures,
                      {qint32{i}, QByteArray(1500, 'p'), 0.5, qint64{1}, qint16{2}});
            }
        }
        (void)engine.EndGroup();
        for (int i = 0; i < 40; ++i) {
            ObjectId record = 0;
            (void)engine.SeekToPosition(numbers, 3 * i, record);
            (void)engine.DeleteRecord(numbers, record);
        }
        for (const ObjectId database : {numbers, pictures}) {
            for (int position = 0; position < CountOf(engine, database); ++position) {
                ObjectId record = 0;
                (void)engine.SeekToPosition(database, position, record);
                (void)engine.ReadRecord(record, stored[record].properties);
            }
        }
        (void)engine.Unmount();
        engine.RemoveListener(&history);
        const QByteArray volume = Load(path);
        std::erase_if(stored, [&volume](const auto& each) {
            QByteArray body;
            EncodeRecord(each.second.properties, body);
            return volume.count(body) != 1;
        });
        for (auto& [record, each] : stored) {
            QByteArray body;
            EncodeRecord(each.properties, body);
            each.page = volume.indexOf(body) / kPageBytes;
        }
        return volume;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
};

QTEST_GUILESS_MAIN(TestVolumeFaults)
#include "TestVolumeFaults.moc"

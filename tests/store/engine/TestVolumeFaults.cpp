// Damaged files.

#include "store/engine/EngineSteps.h"
#include "store/engine/History.h"
#include "support/Files.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {
constexpr int kPageBytes = 8192;

// Everything a reader could do to a volume, and a write and a deletion in each database.
void WalkEverything(CStorageEngine& engine) {
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
            if (engine.SeekToPosition(database.id, position, record) == kErrorSuccess) {
                (void)engine.ReadRecord(record, properties);
            }
        }
        (void)engine.DeleteRecord(database.id, record);
        Added(engine, database.id, Numbered(3));
    }
    (void)engine.EndGroup();
    (void)engine.Unmount();
    engine.RemoveListener(&history);
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
        CStorageEngine engine;
        QCOMPARE(engine.Mount(m_path), kOk);
        Load(m_path);  // closing the file gives up every POSIX lock of the process on it
        const QStringList write = {u"--volume"_s, m_path,      u"categories"_s, u"add"_s,
                                   u"A"_s,        u"--kind"_s, u"foods"_s};
        QCOMPARE(QProcess::execute(QStringLiteral(VELMORA_CLI), write), 1);
        QCOMPARE(engine.Unmount(), kOk);
        QCOMPARE(QProcess::execute(QStringLiteral(VELMORA_CLI), write), 0);
    }

    void damageNeverCrashes() {
        const QByteArray volume = SmallVolume();
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
                WalkEverything(engine);
            } else {
                QCOMPARE(Load(m_path), damaged);
                QVERIFY(!QFile::exists(m_path + u"-journal"_s));
            }
            (void)engine.Unmount();
            QFile::remove(m_path + u"-journal"_s);
        }
        QVERIFY(mounted[0] > 0 && mounted[0] < kRounds && mounted[1] > 0 && mounted[1] < kRounds);
        QCOMPARE(mounted[2], 0);
    }

  private:
    // 400 numbers and a database with pictures, with a history, in a file of some 150 KB.
    QByteArray SmallVolume() {
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
        (void)engine.Unmount();
        engine.RemoveListener(&history);
        return Load(path);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
};

QTEST_GUILESS_MAIN(TestVolumeFaults)
#include "TestVolumeFaults.moc"

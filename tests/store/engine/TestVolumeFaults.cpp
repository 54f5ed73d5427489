// Damaged files, full disks, and death in the middle of a write.

#include "store/engine/EngineSteps.h"
#include "store/engine/SqliteFile.h"
#include "support/DataRows.h"
#include "support/Files.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <csignal>

using namespace Qt::StringLiterals;

namespace {
constexpr int kPageBytes = 8192;
constexpr auto kDieMode = "--die-in-a-write";

ObjectId OpenNumbers(CStorageEngine& engine) {
    CDatabaseInfo info;
    const bool isThere = engine.FindDatabase(u"Numbers"_s, info) == kErrorSuccess;
    return isThere ? info.id : Created(engine, u"Numbers"_s);
}

// A unit of work larger than the cache, so that it reaches the file before it is over.
int DieInAWrite(const QString& path) {
    CStorageEngine engine;
    (void)engine.Mount(path);
    const ObjectId database = OpenNumbers(engine);
    (void)engine.BeginGroup();
    for (int i = 0; i < 1200; ++i) {
        Added(engine, database, {qint32{i}, QByteArray(8000, 'n')});
    }
    std::raise(SIGKILL);
    return 1;
}

// Everything a reader could do to a volume, and a write and a deletion in each database.
void WalkEverything(CStorageEngine& engine) {
    std::vector<CDatabaseInfo> databases;
    (void)engine.ListDatabases(0, databases);
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
}
}  // namespace

class TestVolumeFaults : public QObject {
    Q_OBJECT

  private slots:
    void init() {
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath(u"volume.db"_s);
    }

    void aPathIsNeverTakenForMore() {
        QDir::setCurrent(m_folder->path());
        for (const QString& name : {u"file:v.db?mode=memory"_s, u":memory:"_s}) {
            CStorageEngine engine;
            QCOMPARE(engine.Mount(name), kOk);
            QVERIFY(QFile::exists(m_folder->path() + u'/' + name));
        }
        QDir::setCurrent(QDir::rootPath());
        CStorageEngine engine;
        QCOMPARE(engine.Mount(m_folder->path()), int(kErrorAccessDenied));
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

    void aJournalIsPlayedIntoItsOwnVolumeAlone_data() {
        // What is put into the volume's place, whether the journal is played, records then.
        AddRows<int, bool, int>({
            {"its own volume", 0, true, 2},
            {"a copy from before it was opened", 1, false, 2},
            {"an older back-up", 2, false, 1},
            {"a back-up of before it had an identity", 3, false, 1},
            {"another volume", 4, false, 400},
            {"no file", 5, false, 0},
            {"a copy written to elsewhere", 6, false, 3},
        });
    }

    void aJournalIsPlayedIntoItsOwnVolumeAlone() {
        const auto& [beside, isPlayed, count] = DataRow<int, bool, int>();
        const QString journal = m_path + u"-journal"_s;
        const QString kept = journal + u".kept-2"_s;
        Save(journal + u".kept-1"_s, "kept before");
        WriteNumbers(1);
        const QByteArray older = Load(m_path);
        const QByteArray withoutIdentity = WithoutIdentity(older);
        Save(m_path, older);
        WriteNumbers(1);
        const QByteArray before = Load(m_path);
        WriteNumbers(1);
        const QByteArray writtenElsewhere = Load(m_path);
        Save(m_path, before);
        QCOMPARE(QProcess::execute(QCoreApplication::applicationFilePath(),
                                   {QLatin1StringView(kDieMode), m_path}),
                 -1);  // killed
        const QByteArray left = Load(journal);
        QVERIFY(left.size() > kPageBytes && Load(m_path) != before);
        if (beside > 0) {
            QFile::remove(m_path);
        }
        if (beside > 0 && beside != 5) {
            const QByteArray files[] = {before,        older, withoutIdentity,
                                        SmallVolume(), {},    writtenElsewhere};
            Save(m_path, files[beside - 1]);
        }
        const QString link = m_folder->filePath(u"link.db"_s);
        QVERIFY(QFile::link(m_path, link));
        CStorageEngine engine;
        QCOMPARE(engine.Mount(beside == 5 ? m_path : link), kOk);
        QCOMPARE(engine.GetKeptJournal(), isPlayed ? QString() : kept);
        QCOMPARE(Load(kept), isPlayed ? QByteArray() : left);
        QCOMPARE(CountOf(engine, OpenNumbers(engine)), count);
        QCOMPARE(engine.Unmount(), kOk);
        VerifySound();
    }

    // SQLite would play or delete them.
    void whatIsNoJournalOfOursIsKeptAside_data() {
        const QByteArray magic = "\xD9\xD5\x05\xF9\x20\xA1\x63\xD7";
        const QByteArray created =
            magic + QByteArray("\0\0\0\0\1\2\3\4\0\0\0\0\0\0\2\0\0\0\x20\0", 20);
        AddRows<QByteArray, bool>({
            {"a note", "Buy apples", true},
            {"a header alone", magic, true},
            {"of the creation of another volume", created.leftJustified(512, '\0'), true},
            {"names a common journal", created + "/etc/hosts" + magic, true},
            {"over", QByteArray(600, '\0'), false},
            {"empty", {}, false},
        });
    }

    void whatIsNoJournalOfOursIsKeptAside() {
        const auto& [bytes, isKept] = DataRow<QByteArray, bool>();
        WriteNumbers(1);
        Save(m_path + u"-journal"_s, bytes);
        const QByteArray before = Load(m_path);
        CStorageEngine engine;
        QCOMPARE(engine.Mount(m_path), kOk);
        QCOMPARE(!engine.GetKeptJournal().isEmpty(), isKept);
        QCOMPARE(Load(m_path + u"-journal.kept-1"_s), isKept ? bytes : QByteArray());
        (void)engine.Unmount();
        QCOMPARE(Load(m_path), before);
    }

  private:
    void WriteNumbers(int count) {
        CStorageEngine engine;
        QCOMPARE(engine.Mount(m_path), kOk);
        const ObjectId database = OpenNumbers(engine);
        for (int i = 0; i < count; ++i) {
            QVERIFY(Added(engine, database, Numbered(i)) != 0);
        }
    }

    // As a program that knows of no identity would have left it.
    QByteArray WithoutIdentity(const QByteArray& volume) {
        Save(m_path, volume);
        CSqliteFile file;
        (void)file.Open(m_path);
        (void)file.Execute("DROP TABLE identity");
        (void)file.Close();
        return Load(m_path);
    }

    // 400 numbers and a database with pictures, in a file of some 100 KB.
    QByteArray SmallVolume() {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"volume.db"_s);
        CStorageEngine engine;
        (void)engine.Mount(path);
        const ObjectId numbers = OpenNumbers(engine);
        const ObjectId pictures = Created(engine, u"Pictures"_s, 1);
        (void)engine.BeginGroup();
        for (int i = 0; i < 400; ++i) {
            Added(engine, numbers, Numbered(i));
            if (i % 20 == 0) {
                Added(engine, pictures,
                      {qint32{i}, QByteArray(1500, 'p'), 0.5, qint64{1}, qint16{2}});
            }
        }
        (void)engine.EndGroup();
        (void)engine.Unmount();
        return Load(path);
    }

    void VerifySound() {
        CSqliteFile file;
        QCOMPARE(file.Open(m_path), kOk);
        CStatement check;
        QCOMPARE(check.Prepare(file, "PRAGMA integrity_check"), kOk);
        check.Start({});
        QVERIFY(check.Next());
        QCOMPARE(check.GetText(0), u"ok"_s);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
};

// The tests' second process is this program again.
int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 3 && arguments[1] == QLatin1StringView(kDieMode)) {
        return DieInAWrite(arguments[2]);
    }
    TestVolumeFaults tests;
    return QTest::qExec(&tests, argc, argv);
}
#include "TestVolumeFaults.moc"

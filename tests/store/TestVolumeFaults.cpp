// Foreign and damaged files, full disks, a second owner, and death in the middle of a write.
#include "store/StorageEngine.h"

#include <sqlite3.h>
#include <sys/mount.h>
#include <sys/resource.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>
#include <csignal>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace {
constexpr int kPageBytes = 8192;
constexpr quint32 kByNumber = PropertyId(0, EPropertyType::Int32);
constexpr auto kWriteMode = "--write-until-killed";
constexpr auto kMountMode = "--mount-and-leave";

QByteArray Contents(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void Store(const QString& path, const QByteArray& contents) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(contents), contents.size());
}

PropertyList Numbered(qint32 number) {
    return {number, u"number %1"_s.arg(number)};
}

ObjectId OpenNumbers(CStorageEngine& engine) {
    CDatabaseInfo info;
    if (engine.FindDatabase(u"Numbers"_s, info) != kErrorSuccess) {
        engine.CreateDatabase(u"Numbers"_s, 0, kByNumber, info);
    }
    return info.id;
}

// Numbers go in fours: the first alone, the other three as a group. A number is printed once it
// is confirmed.
int WriteUntilKilled(const QString& path) {
    CStorageEngine engine;
    if (engine.Mount(path) != kErrorSuccess) {
        return 1;
    }
    const ObjectId database = OpenNumbers(engine);
    int next = 0;
    engine.CountRecords(database, next);
    ObjectId record = 0;
    while (true) {
        const int size = next % 4 == 0 ? 1 : 3;
        engine.BeginGroup();
        for (int i = 0; i < size; ++i) {
            engine.AddRecord(database, Numbered(next++), record);
        }
        if (engine.EndGroup() != kErrorSuccess) {
            return 1;
        }
        std::printf("%d\n", next - 1);
        std::fflush(stdout);
    }
}

// Everything a reader could do to a volume, and a write and a deletion in each database.
void WalkEverything(CStorageEngine& engine) {
    std::vector<CDatabaseInfo> databases;
    engine.ListDatabases(0, databases);
    engine.BeginGroup();
    for (const CDatabaseInfo& database : databases) {
        int count = 0;
        engine.CountRecords(database.id, count);
        ObjectId record = 0;
        PropertyList properties;
        for (int position = 0; position < count; ++position) {
            qint64 key = 0;
            int bound = 0;
            engine.KeyAt(database.id, position, key);
            engine.LowerBound(database.id, key, bound);
            if (engine.SeekToPosition(database.id, position, record) == kErrorSuccess) {
                engine.ReadRecord(record, properties);
            }
        }
        engine.DeleteRecord(database.id, record);
        engine.AddRecord(database.id, Numbered(3), record);
    }
    engine.EndGroup();
}
}  // namespace

class TestVolumeFaults : public QObject {
    Q_OBJECT

  private slots:
    void init() {
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath(u"volume.db"_s);
    }

    void otherFilesAreRefusedAndLeftAlone_data() {
        QTest::addColumn<QByteArray>("contents");
        QTest::addColumn<int>("error");
        const QByteArray volume = SmallVolume();
        const auto with = [&volume](int place, char byte) {
            QByteArray changed = volume;
            changed[place] = byte;
            return changed;
        };
        QTest::newRow("a text") << QByteArray("Apple,raw\r\n") << int(kErrorBadFormat);
        QTest::newRow("zeros") << QByteArray(8192, '\0') << int(kErrorBadFormat);
        QTest::newRow("another program's database") << with(71, 'X') << int(kErrorBadFormat);
        QTest::newRow("a newer version") << with(63, 2) << int(kErrorNewerVersion);
        QTest::newRow("another journal format") << with(18, 2) << int(kErrorCorrupt);
        QTest::newRow("cut short") << volume.first(volume.size() / 2) << int(kErrorCorrupt);
    }

    void otherFilesAreRefusedAndLeftAlone() {
        QFETCH(QByteArray, contents);
        QFETCH(int, error);
        Store(m_path, contents);
        CStorageEngine engine;
        QCOMPARE(engine.Mount(m_path), error);
        QVERIFY(!engine.IsMounted());
        QCOMPARE(Contents(m_path), contents);
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), QStringList{u"volume.db"_s});
    }

    void aPathIsNeverTakenForMore() {
        QDir::setCurrent(m_folder->path());
        for (const QString& name : {u"file:v.db?mode=memory"_s, u":memory:"_s}) {
            CStorageEngine engine;
            QCOMPARE(engine.Mount(name), int(kErrorSuccess));
            QVERIFY(QFile::exists(m_folder->path() + u'/' + name));
        }
        QDir::setCurrent(QDir::rootPath());
        CStorageEngine engine;
        QCOMPARE(engine.Mount(m_folder->path()), int(kErrorAccessDenied));
    }

    void aSecondOwnerIsTurnedAway() {
        const QByteArray before = SmallVolume();
        Store(m_path, before);
        CStorageEngine engine;
        QCOMPARE(engine.Mount(m_path), int(kErrorSuccess));
        CStorageEngine second;
        QCOMPARE(second.Mount(m_path), int(kErrorSharingViolation));
        QCOMPARE(QProcess::execute(QCoreApplication::applicationFilePath(),
                                   {QLatin1StringView(kMountMode), m_path}),
                 int(kErrorSharingViolation));
        QCOMPARE(engine.Unmount(), int(kErrorSuccess));
        QCOMPARE(Contents(m_path), before);
    }

    void damageNeverCrashes_data() {
        QTest::addColumn<int>("rounds");
        QTest::newRow("flipped bits") << 300;
        QTest::newRow("zeroed ranges") << 100;
        QTest::newRow("cut ends") << 60;
    }

    void damageNeverCrashes() {
        QFETCH(int, rounds);
        const QByteArray kind(QTest::currentDataTag());
        const QByteArray volume = SmallVolume();
        QRandomGenerator random(7);
        int mounted = 0;
        for (int round = 0; round < rounds; ++round) {
            QByteArray damaged = volume;
            // Every other round hits the header and the schema.
            const int end = round % 2 == 0 ? kPageBytes : static_cast<int>(volume.size());
            if (kind == "flipped bits") {
                for (int i = random.bounded(1, 9); i > 0; --i) {
                    const int place = random.bounded(end);
                    damaged[place] = static_cast<char>(damaged[place] ^ (1 << random.bounded(8)));
                }
            } else if (kind == "zeroed ranges") {
                const int place = random.bounded(end - 64);
                std::fill_n(damaged.begin() + place, 64, '\0');
            } else {
                damaged.truncate(random.bounded(end));
            }
            Store(m_path, damaged);
            CStorageEngine engine;
            if (engine.Mount(m_path) == kErrorSuccess) {
                ++mounted;
                WalkEverything(engine);
            } else {
                QCOMPARE(Contents(m_path), damaged);
                QVERIFY(!QFile::exists(m_path + u"-journal"_s));
            }
            engine.Unmount();
            QFile::remove(m_path + u"-journal"_s);
        }
        // Only a cut inside the last page can pass for a whole file until that page is read.
        QVERIFY(mounted > 0 && mounted < (kind == "cut ends" ? rounds / 4 : rounds));
    }

    void aFullDiskLosesNothing_data() {
        QTest::addColumn<bool>("isFileSystem");
        QTest::newRow("full file system") << true;
        QTest::newRow("limited file size") << false;
    }

    void aFullDiskLosesNothing() {
        QFETCH(bool, isFileSystem);
        const QByteArray folder = m_folder->path().toLocal8Bit();
        if (isFileSystem && ::mount("tmpfs", folder.constData(), "tmpfs", 0, "size=1m") != 0) {
            QSKIP("a file system of one's own can only be mounted by root");
        }
        const auto unmount = qScopeGuard([&] {
            if (isFileSystem) {
                ::umount2(folder.constData(), MNT_DETACH);
            }
        });
        const QString ballast = m_folder->filePath(u"ballast"_s);
        rlimit unlimited{};
        if (isFileSystem) {
            Store(ballast, QByteArray(512 * 1024, 'x'));
        } else {
            std::signal(SIGXFSZ, SIG_IGN);
            QCOMPARE(getrlimit(RLIMIT_FSIZE, &unlimited), 0);
            rlimit tight = unlimited;
            tight.rlim_cur = 256 * 1024;
            QCOMPARE(setrlimit(RLIMIT_FSIZE, &tight), 0);
        }
        CStorageEngine engine;
        QCOMPARE(engine.Mount(m_path), int(kErrorSuccess));
        const ObjectId database = OpenNumbers(engine);
        const PropertyList large = {qint32{1}, QByteArray(3000, 'y')};
        ObjectId record = 0;
        int written = 0;
        int error = kErrorSuccess;
        while (written < 1000 && error == kErrorSuccess) {
            error = engine.AddRecord(database, large, record);
            written += error == kErrorSuccess ? 1 : 0;
        }
        QCOMPARE(error, int(kErrorDiskFull));
        QVERIFY(written > 20);
        // A group that does not fit fails from its first failed write to its end.
        QCOMPARE(engine.BeginGroup(), int(kErrorSuccess));
        engine.AddRecord(database, {qint32{1}, QByteArray(20'000'000, 'z')}, record);
        QCOMPARE(engine.AddRecord(database, Numbered(1), record), int(kErrorDiskFull));
        QCOMPARE(engine.EndGroup(), int(kErrorDiskFull));
        if (isFileSystem) {
            QVERIFY(QFile::remove(ballast));
        } else {
            QCOMPARE(setrlimit(RLIMIT_FSIZE, &unlimited), 0);
        }
        QCOMPARE(engine.AddRecord(database, large, record), int(kErrorSuccess));
        QCOMPARE(engine.Unmount(), int(kErrorSuccess));
        QCOMPARE(engine.Mount(m_path), int(kErrorSuccess));
        int count = 0;
        QCOMPARE(engine.CountRecords(database, count), int(kErrorSuccess));
        QCOMPARE(count, written + 1);
        engine.Unmount();
        VerifySound();
    }

    void whatWasConfirmedSurvivesAKill() {
        QRandomGenerator random(100);
        int confirmed = -1;
        for (int round = 0; round < 100; ++round) {
            QProcess child;
            child.start(QCoreApplication::applicationFilePath(),
                        {QLatin1StringView(kWriteMode), m_path});
            for (int lines = random.bounded(0, 12); lines > 0; --lines) {
                QVERIFY(child.canReadLine() || child.waitForReadyRead());
                confirmed = child.readLine().trimmed().toInt();
            }
            QTest::qSleep(random.bounded(3));
            child.kill();
            QVERIFY(child.waitForFinished());
            while (child.canReadLine()) {
                confirmed = child.readLine().trimmed().toInt();
            }
            VerifyNumbersUpTo(confirmed);
            if (QTest::currentTestFailed()) {
                return;
            }
        }
        QVERIFY(confirmed > 100);
    }

  private:
    // 400 numbers and a database with pictures, in a file of some 100 KB.
    QByteArray SmallVolume() {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"volume.db"_s);
        CStorageEngine engine;
        engine.Mount(path);
        const ObjectId numbers = OpenNumbers(engine);
        CDatabaseInfo pictures;
        engine.CreateDatabase(u"Pictures"_s, 1, kByNumber, pictures);
        ObjectId record = 0;
        engine.BeginGroup();
        for (int i = 0; i < 400; ++i) {
            engine.AddRecord(numbers, Numbered(i), record);
            if (i % 20 == 0) {
                engine.AddRecord(pictures.id,
                                 {qint32{i}, QByteArray(1500, 'p'), 0.5, qint64{1}, qint16{2}},
                                 record);
            }
        }
        engine.EndGroup();
        engine.Unmount();
        return Contents(path);
    }

    void VerifyNumbersUpTo(int confirmed) {
        CStorageEngine engine;
        QCOMPARE(engine.Mount(m_path), int(kErrorSuccess));
        const ObjectId database = OpenNumbers(engine);
        int count = 0;
        QCOMPARE(engine.CountRecords(database, count), int(kErrorSuccess));
        QVERIFY(count > confirmed);
        QVERIFY2(count % 4 <= 1, "a group was cut in two");
        for (int position = 0; position < count; ++position) {
            ObjectId record = 0;
            PropertyList properties;
            QCOMPARE(engine.SeekToPosition(database, position, record), int(kErrorSuccess));
            QCOMPARE(engine.ReadRecord(record, properties), int(kErrorSuccess));
            QVERIFY(properties == Numbered(position));
        }
        engine.Unmount();
        VerifySound();
    }

    void VerifySound() {
        sqlite3* connection = nullptr;
        QCOMPARE(sqlite3_open(m_path.toUtf8().constData(), &connection), SQLITE_OK);
        sqlite3_stmt* check = nullptr;
        sqlite3_prepare_v2(connection, "PRAGMA integrity_check", -1, &check, nullptr);
        QCOMPARE(sqlite3_step(check), SQLITE_ROW);
        QCOMPARE(QByteArray(reinterpret_cast<const char*>(sqlite3_column_text(check, 0))),
                 QByteArray("ok"));
        sqlite3_finalize(check);
        sqlite3_close(connection);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
};

// The tests' second process is this program again.
int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 3 && arguments[1] == QLatin1StringView(kWriteMode)) {
        return WriteUntilKilled(arguments[2]);
    }
    if (arguments.size() == 3 && arguments[1] == QLatin1StringView(kMountMode)) {
        return CStorageEngine().Mount(arguments[2]);
    }
    TestVolumeFaults tests;
    return QTest::qExec(&tests, argc, argv);
}
#include "TestVolumeFaults.moc"

// The engine against a plain sorted list, and its refusals.
#include "store/StorageEngine.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
constexpr quint32 kByNumber = PropertyId(0, EPropertyType::Int32);

struct CExpected {
    qint32 key;
    ObjectId record;
    bool operator==(const CExpected&) const = default;
};

PropertyList Numbered(qint32 key, const QString& text = QString()) {
    return {key, text};
}

// The list that positions must agree with: equal keys in order of insertion.
void InsertSorted(std::vector<CExpected>& list, CExpected entry) {
    const auto at = std::ranges::upper_bound(list, entry.key, {}, &CExpected::key);
    list.insert(at, entry);
}
}  // namespace

class TestStorageEngine : public QObject {
    Q_OBJECT

  private slots:
    void init() {
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath(u"volume.db"_s);
        m_engine = std::make_unique<CStorageEngine>();
        QCOMPARE(m_engine->Mount(m_path), int(kErrorSuccess));
        CDatabaseInfo info;
        QCOMPARE(m_engine->CreateDatabase(u"Numbers"_s, 7, kByNumber, info), int(kErrorSuccess));
        m_database = info.id;
    }

    void cleanup() {
        m_engine.reset();
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), QStringList{u"volume.db"_s});
    }

    void positionsFollowKeyAndInsertion_data() {
        QTest::addColumn<int>("rounds");
        QTest::addColumn<int>("insertsInTen");
        QTest::addColumn<QString>("keys");
        QTest::newRow("many equal keys") << 16 << 6 << u"few"_s;
        QTest::newRow("scattered keys") << 16 << 7 << u"any"_s;
        QTest::newRow("shrinking") << 16 << 4 << u"any"_s;
        QTest::newRow("ascending") << 16 << 9 << u"ascending"_s;
        // Halving the first block again and again uses up the gap behind it.
        QTest::newRow("descending") << 32 << 10 << u"descending"_s;
    }

    void positionsFollowKeyAndInsertion() {
        QFETCH(int, rounds);
        QFETCH(int, insertsInTen);
        QFETCH(QString, keys);
        QRandomGenerator random(20);
        std::vector<CExpected> expected;
        for (int round = 0; round < rounds; ++round) {
            QCOMPARE(m_engine->BeginGroup(), int(kErrorSuccess));
            for (int i = 0; i < 250; ++i) {
                const int serial = round * 250 + i;
                qint32 key = random.bounded(-1000, 1000);
                if (keys != u"any"_s) {
                    key = keys == u"few"_s ? key % 4 : keys == u"ascending"_s ? serial : -serial;
                }
                ChangeBoth(expected, key, random.bounded(10) < insertsInTen, random);
                if (QTest::currentTestFailed()) {
                    return;
                }
            }
            QCOMPARE(m_engine->EndGroup(), int(kErrorSuccess));
            if (round % 4 == 3) {
                Remount();
                CompareAll(expected);
            }
        }
    }

    void readsBackWhatWasWritten() {
        const PropertyList written = {qint32{5},   qint16{-2},
                                      -0.0,        1e300,
                                      qint64{-1},  u"a\u00e9\U0001F34E"_s,
                                      QString(),   QByteArray("\0\xff", 2),
                                      QByteArray()};
        ObjectId record = 0;
        QCOMPARE(m_engine->AddRecord(m_database, written, record), int(kErrorSuccess));
        Remount();
        PropertyList read;
        QCOMPARE(m_engine->ReadRecord(record, read), int(kErrorSuccess));
        QVERIFY(read == written);
        QVERIFY(std::signbit(std::get<double>(read[2])));
        QCOMPARE(m_engine->ReadRecord(record + 1, read), int(kErrorFileNotFound));
    }

    void anUnfinishedGroupIsNotKept() {
        ObjectId record = 0;
        QCOMPARE(m_engine->AddRecord(m_database, Numbered(1), record), int(kErrorSuccess));
        QCOMPARE(m_engine->BeginGroup(), int(kErrorSuccess));
        QCOMPARE(m_engine->BeginGroup(), int(kErrorSuccess));
        QCOMPARE(m_engine->AddRecord(m_database, Numbered(2), record), int(kErrorSuccess));
        QCOMPARE(m_engine->EndGroup(), int(kErrorSuccess));
        // The inner end made nothing durable.
        QCOMPARE(m_engine->Unmount(), int(kErrorSuccess));
        QCOMPARE(m_engine->EndGroup(), int(kErrorInvalidParameter));
        QCOMPARE(m_engine->Mount(m_path), int(kErrorSuccess));
        int count = 0;
        QCOMPARE(m_engine->CountRecords(m_database, count), int(kErrorSuccess));
        QCOMPARE(count, 1);
    }

    void databasesAreFoundWithoutCase() {
        CDatabaseInfo info;
        QCOMPARE(m_engine->CreateDatabase(u"\u00c9mile"_s, 0x1001, kByNumber, info),
                 int(kErrorSuccess));
        QCOMPARE(m_engine->CreateDatabase(u"\u00e9MILE"_s, 0, kByNumber, info),
                 int(kErrorAlreadyExists));
        Remount();
        QCOMPARE(m_engine->FindDatabase(u"\u00e9mile"_s, info), int(kErrorSuccess));
        QCOMPARE(info.name, u"\u00c9mile"_s);
        QCOMPARE(info.type, 0x1001U);
        std::vector<CDatabaseInfo> all;
        QCOMPARE(m_engine->ListDatabases(0, all), int(kErrorSuccess));
        QCOMPARE(all.size(), 2U);
        QCOMPARE(m_engine->ListDatabases(7, all), int(kErrorSuccess));
        QCOMPARE(all.size(), 1U);
        QCOMPARE(all[0].name, u"Numbers"_s);
    }

    void wrongArgumentsAreRefused() {
        CDatabaseInfo info;
        QCOMPARE(m_engine->CreateDatabase(QString(31, u'x'), 0, kByNumber, info),
                 int(kErrorSuccess));
        QCOMPARE(m_engine->CreateDatabase(QString(32, u'y'), 0, kByNumber, info),
                 int(kErrorInvalidName));
        QCOMPARE(m_engine->CreateDatabase(u"T"_s, 0, PropertyId(0, EPropertyType::Text), info),
                 int(kErrorInvalidParameter));
        QCOMPARE(m_engine->CreateDatabase(u"T"_s, 0, PropertyId(1, EPropertyType::Int32), info),
                 int(kErrorInvalidParameter));
        ObjectId record = 0;
        QCOMPARE(m_engine->AddRecord(m_database, {QString()}, record), int(kErrorInvalidParameter));
        QCOMPARE(m_engine->AddRecord(99, Numbered(1), record), int(kErrorFileNotFound));
        QCOMPARE(m_engine->SeekToPosition(m_database, 0, record), int(kErrorFileNotFound));
        QCOMPARE(m_engine->SeekToPosition(m_database, -1, record), int(kErrorFileNotFound));
    }

    void aDeletedDatabaseTakesItsRecordsAlong() {
        CDatabaseInfo other;
        QCOMPARE(m_engine->CreateDatabase(u"Other"_s, 0, kByNumber, other), int(kErrorSuccess));
        ObjectId mine = 0;
        ObjectId theirs = 0;
        QCOMPARE(m_engine->AddRecord(m_database, Numbered(1), mine), int(kErrorSuccess));
        QCOMPARE(m_engine->AddRecord(other.id, Numbered(1), theirs), int(kErrorSuccess));
        QCOMPARE(m_engine->DeleteRecord(m_database, theirs), int(kErrorFileNotFound));
        QCOMPARE(m_engine->DeleteDatabase(m_database), int(kErrorSuccess));
        PropertyList read;
        QCOMPARE(m_engine->ReadRecord(mine, read), int(kErrorFileNotFound));
        QCOMPARE(m_engine->ReadRecord(theirs, read), int(kErrorSuccess));
        int count = 0;
        QCOMPARE(m_engine->CountRecords(m_database, count), int(kErrorFileNotFound));
    }

  private:
    void Remount() {
        QCOMPARE(m_engine->Unmount(), int(kErrorSuccess));
        QCOMPARE(m_engine->Mount(m_path), int(kErrorSuccess));
    }

    // One insertion, or a deletion, or a move to another key, in both.
    void ChangeBoth(std::vector<CExpected>& expected, qint32 key, bool isInsertion,
                    QRandomGenerator& random) {
        ObjectId record = 0;
        if (isInsertion || expected.empty()) {
            QCOMPARE(m_engine->AddRecord(m_database, Numbered(key), record), int(kErrorSuccess));
            InsertSorted(expected, {key, record});
            return;
        }
        const int position = random.bounded(static_cast<int>(expected.size()));
        CExpected old = expected[position];
        if (random.bounded(2) == 0) {
            // Every other time the place sought last is the right one.
            QCOMPARE(m_engine->SeekToPosition(m_database, position, record), int(kErrorSuccess));
            QCOMPARE(record, old.record);
        }
        if (random.bounded(3) != 0) {
            QCOMPARE(m_engine->DeleteRecord(m_database, old.record), int(kErrorSuccess));
            expected.erase(expected.begin() + position);
            return;
        }
        QCOMPARE(m_engine->ReplaceRecord(m_database, old.record, Numbered(key)),
                 int(kErrorSuccess));
        if (key != old.key) {
            expected.erase(expected.begin() + position);
            InsertSorted(expected, {key, old.record});
        }
    }

    void CompareAll(const std::vector<CExpected>& expected) {
        std::vector<CExpected> found;
        int count = 0;
        QCOMPARE(m_engine->CountRecords(m_database, count), int(kErrorSuccess));
        for (int position = 0; position < count; ++position) {
            qint64 key = 0;
            ObjectId record = 0;
            QCOMPARE(m_engine->KeyAt(m_database, position, key), int(kErrorSuccess));
            QCOMPARE(m_engine->SeekToPosition(m_database, position, record), int(kErrorSuccess));
            found.push_back({static_cast<qint32>(key), record});
        }
        QVERIFY(found == expected);
        for (int key = -1010; key < 1010; key += 7) {
            const auto first = std::ranges::lower_bound(expected, key, {}, &CExpected::key);
            int position = 0;
            QCOMPARE(m_engine->LowerBound(m_database, key, position), int(kErrorSuccess));
            QCOMPARE(position, static_cast<int>(first - expected.begin()));
        }
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
    std::unique_ptr<CStorageEngine> m_engine;
    ObjectId m_database = 0;
};

QTEST_GUILESS_MAIN(TestStorageEngine)
#include "TestStorageEngine.moc"

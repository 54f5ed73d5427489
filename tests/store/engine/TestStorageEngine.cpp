// The engine against a plain sorted list, and its refusals.
#include "store/engine/ChangeFeed.h"
#include "store/engine/Checksum.h"
#include "store/engine/EngineFixture.h"
#include "store/engine/NamedValues.h"
#include "store/engine/RecordCodec.h"
#include "store/engine/SqliteFile.h"
#include "store/engine/Statement.h"
#include "store/engine/VolumeHeader.h"
#include "store/engine/VolumeIdentity.h"
#include "support/DataRows.h"

#include <QCryptographicHash>
#include <QDir>
#include <QRandomGenerator>
#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {
struct CExpected {
    qint32 key;
    ObjectId record;
    bool operator==(const CExpected&) const = default;
};

// The list that positions must agree with: equal keys in order of insertion.
void InsertSorted(std::vector<CExpected>& list, CExpected entry) {
    const auto at = std::ranges::upper_bound(list, entry.key, {}, &CExpected::key);
    list.insert(at, entry);
}
}  // namespace

class TestStorageEngine : public CEngineTest {
    Q_OBJECT

  private slots:
    void init() { MakeVolume(); }

    void cleanup() {
        m_engine.reset();
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), QStringList{u"volume.db"_s});
    }

    void positionsFollowKeyAndInsertion_data() {
        AddRows<int, int, QString>({
            {"many equal keys", 16, 6, u"few"_s},
            {"scattered keys", 16, 7, u"any"_s},
            {"shrinking", 16, 4, u"any"_s},
            {"ascending", 16, 9, u"ascending"_s},
            // Halving the first block again and again uses up the gap behind it.
            {"descending", 32, 10, u"descending"_s},
        });
    }

    void positionsFollowKeyAndInsertion() {
        const auto& [rounds, insertsInTen, keys] = DataRow<int, int, QString>();
        QRandomGenerator random(20);
        std::vector<CExpected> expected;
        for (int round = 0; round < rounds; ++round) {
            QCOMPARE(m_engine->BeginGroup(), kOk);
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
            QCOMPARE(m_engine->EndGroup(), kOk);
            if (round % 4 == 3) {
                Remount();
                CompareAll(expected);
            }
        }
    }

    void anUnfinishedGroupIsNotKept() {
        QVERIFY(Added(*m_engine, m_database, Numbered(1)) != 0);
        QCOMPARE(m_engine->BeginGroup(), kOk);
        QCOMPARE(m_engine->BeginGroup(), kOk);
        QVERIFY(Added(*m_engine, m_database, Numbered(2)) != 0);
        QCOMPARE(m_engine->EndGroup(), kOk);
        // The inner end made nothing durable.
        Remount();
        QCOMPARE(m_engine->EndGroup(), int(kErrorInvalidParameter));
        QCOMPARE(CountOf(*m_engine, m_database), 1);
        // Nor does the failure of a group outlive it.
        QCOMPARE(m_engine->BeginGroup(), kOk);
        QCOMPARE(m_engine->BeginGroup(), kOk);
        QCOMPARE(m_engine->UndoGroup(), kOk);
        QCOMPARE(m_engine->EndGroup(), int(kErrorOperationAborted));
        Remount();
        QVERIFY(Added(*m_engine, m_database, Numbered(3)) != 0);
    }

    // The first unit after opening is preceded by one of its own, but for a new volume.
    void eachUnitStoresItsGeneration() {
        for (const quint64 generation : {1, 2, 3, 5, 6}) {
            if (generation == 5) {
                Remount();
            }
            QVERIFY(generation == 1 || Added(*m_engine, m_database, Numbered(1)) != 0);
            QCOMPARE(CVolumeIdentity::FindIn(Load(m_path))->generation, generation);
        }
    }

    // A failure in any of them undoes the change, and is the one reported.
    void whoFollowsTheChangesMayRefuseThem() {
        struct CRefuser : CChangeListener {
            int refused = -1;
            int calls = 0;
            EPlatformError Call() {
                return calls++ == refused ? kErrorOperationAborted : kErrorSuccess;
            }
            [[nodiscard]] bool Watches(qint64) const override { return true; }
            EPlatformError RecordChanged(const CRecordChange&) override { return Call(); }
            EPlatformError DatabaseDeleted(qint64) override { return Call(); }
            EPlatformError UnitBegins() override { return Call(); }
            EPlatformError UnitEnds() override { return Call(); }
        };
        const ObjectId record = Added(*m_engine, m_database, Numbered(1));
        std::array<CRefuser, 2> listeners;
        m_engine->AddListener(&listeners[0]);
        m_engine->AddListener(&listeners[1]);
        for (int i = 0; i < 9; ++i) {
            const int refused = i % 3;  // the beginning, the change or the end
            listeners = {};
            listeners[0].refused = refused;
            const int error = i < 3   ? m_engine->ReplaceRecord(m_database, record, Numbered(2))
                              : i < 6 ? m_engine->DeleteRecord(m_database, record)
                                      : m_engine->DeleteDatabase(m_database);
            QCOMPARE(error, int(kErrorOperationAborted));
            QCOMPARE(listeners[1].calls, refused);
            QCOMPARE(CountOf(*m_engine, m_database), 1);
        }
        m_engine->RemoveListener(&listeners[0]);
        m_engine->RemoveListener(&listeners[1]);
    }

    void databasesAreFoundWithoutCase() {
        QVERIFY(Created(*m_engine, u"\u00c9mile"_s, 0x1001) != 0);
        CDatabaseInfo info;
        QCOMPARE(m_engine->CreateDatabase(u"\u00e9MILE"_s, 0, kByNumber, info),
                 int(kErrorAlreadyExists));
        Remount();
        QCOMPARE(m_engine->FindDatabase(u"\u00e9mile"_s, info), kOk);
        QCOMPARE(info.name, u"\u00c9mile"_s);
        QCOMPARE(info.type, 0x1001U);
    }

    void wrongArgumentsAreRefused() {
        QVERIFY(Created(*m_engine, QString(31, u'x')) != 0);
        for (const auto& [name, sort, error] :
             {std::tuple{QString(32, u'y'), kByNumber, int(kErrorInvalidName)},
              {u"T"_s, PropertyId(0, EPropertyType::Text), kErrorInvalidParameter},
              {u"T"_s, PropertyId(1, EPropertyType::Int32), kErrorInvalidParameter}}) {
            CDatabaseInfo info;
            QCOMPARE(m_engine->CreateDatabase(name, 0, sort, info), error);
        }
        ObjectId record = Added(*m_engine, m_database, Numbered(1));
        int count = 0;
        qint64 key = 0;
        const PropertyList most(kMaximumProperties, qint32{1});
        QCOMPARE(m_engine->ReplaceRecord(m_database, record, most), kOk);
        PropertyList tooMany = most;
        tooMany.emplace_back(qint32{1});
        for (const PropertyList& wrong : {PropertyList(), PropertyList{QString()}, tooMany}) {
            QCOMPARE(m_engine->ReplaceRecord(m_database, record, wrong),
                     int(kErrorInvalidParameter));
            ObjectId added = 0;
            QCOMPARE(m_engine->AddRecord(m_database, wrong, added), int(kErrorInvalidParameter));
        }
        constexpr ObjectId kNoDatabase = 99;
        for (const int error :
             {m_engine->AddRecord(kNoDatabase, Numbered(1), record),
              m_engine->ReplaceRecord(kNoDatabase, record, Numbered(1)),
              m_engine->DeleteRecord(kNoDatabase, record), m_engine->DeleteDatabase(kNoDatabase),
              m_engine->CountRecords(kNoDatabase, count),
              m_engine->SeekToPosition(kNoDatabase, 0, record),
              m_engine->LowerBound(kNoDatabase, 0, count),
              m_engine->FindRecord(kNoDatabase, record, count),
              m_engine->KeyAt(kNoDatabase, 0, key), m_engine->SizeOfRecord(record + 1, count)}) {
            QCOMPARE(error, int(kErrorFileNotFound));
        }
        for (const int position : {-1, 1}) {
            QCOMPARE(m_engine->SeekToPosition(m_database, position, record),
                     int(kErrorFileNotFound));
            QCOMPARE(m_engine->KeyAt(m_database, position, key), int(kErrorFileNotFound));
        }
        CStorageEngine unmounted;
        CNamedValues values(unmounted.State());
        std::optional<QString> value;
        for (const int error : {m_engine->Mount(m_path), m_engine->UndoGroup(),
                                unmounted.BeginGroup(), values.Read(0, u"a"_s, value),
                                values.Write(0, u"a"_s, u"b"_s), values.DeleteOwner(0)}) {
            QCOMPARE(error, int(kErrorInvalidParameter));
        }
        constexpr int kNoResultOfSqlite = 99;
        QCOMPARE(PlatformErrorOf(kNoResultOfSqlite), int(kErrorInputOutput));
    }

    // Volumes written before must stay readable.
    void whatIsStoredStaysTheSame() {
        QByteArray bytes;
        for (int i = 0; i < 100; ++i) {
            bytes += static_cast<char>(7 * i);
        }
        quint64 sum = 0;
        for (int size = 0; size <= 100; ++size) {
            sum = ChecksumWith(sum, ChecksumOf(bytes.first(size), sum));
        }
        QCOMPARE(sum, 0xC59CB47626897F3EU);
        CVolumeIdentity identity;
        std::copy_n(bytes.begin(), identity.volume.size(), identity.volume.begin());
        identity.generation = 0x0102;
        identity.nonce = 0x0304;
        identity.previousNonce = 0x0506;
        const QByteArray row = identity.ToBytes();
        QCOMPARE(row.toHex(), QByteArray("9a561d6c6de372610769f0646e843bc6"
                                         "00070e151c232a31383f464d545b6269"
                                         "020100000000000004030000000000000605000000000000"));
        for (const int most : {55, 56}) {
            QCOMPARE(CVolumeIdentity::FindIn("ab" + row.first(most)).has_value(), most == 56);
        }
        QVERIFY(CVolumeIdentity::FindIn("ab" + row) == identity);
        VolumeHeader header{};
        header[17] = 1;
        QCOMPARE(PageSizeIn(header), 65536);
    }

    // Each byte in turn is changed or the last one; what is still a record, and which.
    void aDamagedRecordIsRecognized() {
        const PropertyList written = {qint32{5},        qint16{-2},       -0.0,      u"ab"_s,
                                      QByteArray("cd"), qint64{1} << 40U, QString(), 0.0};
        QByteArray body;
        EncodeRecord(written, body);
        int records = 0;
        QCryptographicHash read(QCryptographicHash::Md5);
        const auto readDamaged = [&](QByteArrayView damaged) {
            PropertyList properties;
            QByteArray again;
            if (DecodeRecord(damaged, properties)) {
                ++records;
                EncodeRecord(properties, again);
                read.addData(again);
            }
        };
        for (int at = 0; at < body.size(); ++at) {
            readDamaged(body.first(at));
            for (const int bit : {0x01, 0x02, 0x10, 0x40, 0x80}) {
                QByteArray damaged = body;
                damaged[at] = static_cast<char>(damaged[at] ^ bit);
                readDamaged(damaged);
            }
        }
        QCOMPARE(records, 140);
        QCOMPARE(read.result().toHex(), QByteArray("fdadc6b934996b72f435a3cb52ceb90d"));
    }

    void aDeletedDatabaseTakesItsRecordsAlong() {
        const ObjectId other = Created(*m_engine, u"Other"_s);
        const ObjectId mine = Added(*m_engine, m_database, Numbered(1));
        const ObjectId theirs = Added(*m_engine, other, Numbered(1));
        QCOMPARE(m_engine->DeleteRecord(m_database, theirs), int(kErrorFileNotFound));
        int position = 0;
        QCOMPARE(m_engine->FindRecord(m_database, theirs, position), int(kErrorFileNotFound));
        QCOMPARE(m_engine->DeleteDatabase(m_database), kOk);
        PropertyList read;
        QCOMPARE(m_engine->ReadRecord(mine, read), int(kErrorFileNotFound));
        QCOMPARE(m_engine->ReadRecord(theirs, read), kOk);
        QCOMPARE(CountOf(*m_engine, m_database), -1);
    }

    void identifiersAreGivenOnce() {
        const ObjectId first = Added(*m_engine, m_database, Numbered(1));
        const ObjectId second = Added(*m_engine, m_database, Numbered(2));
        QCOMPARE(m_engine->DeleteRecord(m_database, second), kOk);
        QCOMPARE(m_engine->DeleteRecord(m_database, first), kOk);
        const ObjectId third = Added(*m_engine, m_database, Numbered(3));
        QCOMPARE(third, second + 1);
        QCOMPARE(m_engine->DeleteRecord(m_database, third), kOk);
        Remount();
        const ObjectId fourth = Added(*m_engine, m_database, Numbered(4));
        QCOMPARE(fourth, third + 1);
        // What was undone has been given to nobody.
        QCOMPARE(m_engine->BeginGroup(), kOk);
        QCOMPARE(m_engine->DeleteRecord(m_database, fourth), kOk);
        QCOMPARE(Added(*m_engine, m_database, Numbered(5)), fourth + 1);
        QCOMPARE(m_engine->UndoGroup(), kOk);
        QCOMPARE(m_engine->EndGroup(), int(kErrorOperationAborted));
        QCOMPARE(Added(*m_engine, m_database, Numbered(5)), fourth + 1);
        QCOMPARE(m_engine->DeleteDatabase(m_database), kOk);
        Remount();
        const ObjectId database = Created(*m_engine, u"Numbers"_s);
        QCOMPARE(database, m_database + 1);
        QCOMPARE(Added(*m_engine, database, Numbered(6)), fourth + 2);
        // Another volume has its own.
        QCOMPARE(m_engine->DeleteDatabase(database), kOk);
        QCOMPARE(m_engine->Unmount(), kOk);
        QVERIFY(QFile::remove(m_path));
        QCOMPARE(m_engine->Mount(m_path), kOk);
        const ObjectId elsewhere = Created(*m_engine, u"Numbers"_s);
        QCOMPARE(elsewhere, 1);
        QCOMPARE(Added(*m_engine, elsewhere, Numbered(7)), 1);
    }

  private:
    // One insertion, or a deletion, or a move to another key, in both.
    void ChangeBoth(std::vector<CExpected>& expected, qint32 key, bool isInsertion,
                    QRandomGenerator& random) {
        if (isInsertion || expected.empty()) {
            InsertSorted(expected, {key, Added(*m_engine, m_database, Numbered(key))});
            return;
        }
        const int position = random.bounded(static_cast<int>(expected.size()));
        CExpected old = expected[position];
        if (random.bounded(2) == 0) {
            // Every other time the place sought last is the right one.
            ObjectId record = 0;
            QCOMPARE(m_engine->SeekToPosition(m_database, position, record), kOk);
            QCOMPARE(record, old.record);
        }
        if (random.bounded(3) != 0) {
            QCOMPARE(m_engine->DeleteRecord(m_database, old.record), kOk);
            expected.erase(expected.begin() + position);
            return;
        }
        QCOMPARE(m_engine->ReplaceRecord(m_database, old.record, Numbered(key)), kOk);
        if (key != old.key) {
            expected.erase(expected.begin() + position);
            InsertSorted(expected, {key, old.record});
        }
    }

    void CompareAll(const std::vector<CExpected>& expected) {
        std::vector<CExpected> found;
        for (int position = 0; position < CountOf(*m_engine, m_database); ++position) {
            qint64 key = 0;
            ObjectId record = 0;
            QCOMPARE(m_engine->KeyAt(m_database, position, key), kOk);
            QCOMPARE(m_engine->SeekToPosition(m_database, position, record), kOk);
            found.push_back({static_cast<qint32>(key), record});
        }
        QVERIFY(found == expected);
        for (int place = 0; place < std::ssize(expected); ++place) {
            int position = -1;
            QCOMPARE(m_engine->FindRecord(m_database, expected[place].record, position), kOk);
            QCOMPARE(position, place);
        }
        for (int key = -1010; key < 1010; key += 7) {
            const auto first = std::ranges::lower_bound(expected, key, {}, &CExpected::key);
            int position = 0;
            QCOMPARE(m_engine->LowerBound(m_database, key, position), kOk);
            QCOMPARE(position, static_cast<int>(first - expected.begin()));
        }
    }
};

QTEST_GUILESS_MAIN(TestStorageEngine)
#include "TestStorageEngine.moc"

// The counts of what a profile eats follow its diary, and are counted again where they are wrong.
#include <random>

#include "diary/PurgeRules.h"
#include "support/CatalogueTest.h"
#include "support/DataRows.h"

using namespace Qt::StringLiterals;

namespace {
const QDate kDay(2026, 5, 31);

CDietEntry MakeEntry(const QString& name, int meal, int minute = 0) {
    return MakeFruitEntry(kDay, name, meal, minute);
}
}  // namespace

class TestUseCounts : public CCatalogueTest {
    Q_OBJECT

  private slots:
    void init() {
        MakeVolume();
        m_random.seed(20260531);
        m_fruit = AddCategory(Database(), u"Fruit"_s);
    }
    void cleanup() { DropVolume(); }

    void countsFollowTheDiary() {
        for (const QString& profile : {u"Ann"_s, u"Bob"_s}) {
            QVERIFY(Database().Profiles().Open(profile, true));
            for (int step = 0; step < 120; ++step) {
                ChangeDiary();
                if (step % 7 == 0) {
                    CompareCounts();
                }
            }
            QVERIFY(PurgeDiaries(Database(), {.begin = kDay, .end = kDay, .diet = true}));
            QVERIFY(Database().Diet().Write(-1, MakeEntry(u"Apple"_s, 1)));
            CompareCounts();
        }
        m_messages->TakeShown();
        const auto entries = Database().Diet().Count();
        QVERIFY(Database().Profiles().Open(u"Ann"_s, false));
        const auto all = entries + Database().Diet().Count();
        QCOMPARE(Query("SELECT sum(count) FROM usage_1 WHERE owner>0"), all);
        // The next program goes on with them.
        QVERIFY(Database().Profiles().Open(u"Ann"_s, false));
        QVERIFY(Database().Diet().Write(-1, MakeEntry(u"Apple"_s, 1)));
        Reopen();
        QVERIFY(Database().Foods().Write(-1, MakeFood(m_fruit, u"Fig"_s, u"raw"_s)));
        Reopen();
        QVERIFY(Database().Profiles().Open(u"Ann"_s, false));
        QVERIFY(Database().Diet().Write(-1, MakeEntry(u"Apple"_s, 1)));
        QCOMPARE(Query("SELECT sum(count) FROM usage_1 WHERE owner>0"), all + 2);
        QCOMPARE(Query("SELECT count(*) FROM usage_1 WHERE owner>0 AND count<1"), 0);
        // What is stored is the same as what is counted.
        for (const QString& profile : {u"Ann"_s, u"Bob"_s}) {
            QVERIFY(Database().Profiles().Open(profile, false));
            CompareCounts();
        }
        Database().Profiles().Close();
        QVERIFY(Database().Profiles().Delete(u"Bob"_s));
        QCOMPARE(Query("SELECT count(DISTINCT owner) FROM usage_1 WHERE owner>0"), 1);
    }

    void wrongCountsAreCountedAgain_data() {
        AddRows<QByteArray, int>({
            {"no table", "DROP TABLE usage_1", 1},
            {"no rows", "DELETE FROM usage_1 WHERE owner>0", 1},
            {"a row too few", "DELETE FROM usage_1 WHERE name='Apple'", 1},
            {"a count too large", "UPDATE usage_1 SET count=count+1 WHERE owner>0", 1},
            {"a count below 1",
             "UPDATE usage_1 SET count=CASE name WHEN 'Apple' THEN 2 ELSE 0 END WHERE owner>0", 2},
            {"a table of someone else", "ALTER TABLE usage_1 RENAME COLUMN category TO something",
             2},
            {"an unreadable page", "page", 2},
            {"an entry edited by another program", "edit", 1},
        });
    }
    void wrongCountsAreCountedAgain() {
        const auto& [damage, table] = DataRow<QByteArray, int>();
        const QByteArray sum =
            "SELECT sum(count) FROM usage_" + QByteArray::number(table) + " WHERE owner>0";
        for (const bool looksFirst : {true, false}) {
            init();
            QVERIFY(Database().Profiles().Open(u"Ann"_s, true));
            QVERIFY(Database().Diet().Write(-1, MakeEntry(u"Apple"_s, 1)));
            QVERIFY(Database().Diet().Write(-1, MakeEntry(u"Banana"_s, 2)));
            if (damage == "page") {
                const QString path = VolumePath();
                DamagePage(path, RootOf(path, u"usage_1"_s));
                Reopen();
            } else if (damage == "edit") {
                EditElsewhere();
            } else {
                Change(damage.constData());
            }
            QVERIFY(Database().Profiles().Open(u"Ann"_s, true));
            if (looksFirst) {
                CompareCounts();
            }
            QVERIFY(Database().Diet().Write(-1, MakeEntry(u"Banana"_s, 1)));
            if (!looksFirst) {
                CompareCounts();
            }
            QVERIFY(Database().Diet().Delete(0));
            CompareCounts();
            QCOMPARE(Query(sum.constData()), 2);
        }
    }

    void entriesThatCannotBeReadAreCountedOnce() {
        QVERIFY(Database().Profiles().Open(u"Ann"_s, true));
        for (const QString& name : {u"Apple"_s, u"Banana"_s}) {
            QVERIFY(Database().Diet().Write(-1, MakeEntry(name, 1)));
        }
        // Another one has a text in the place of its kind, and a third ends before it.
        CRecordStore& store = Database().GetStore();
        CDatabaseHandle diet{Database().Diet().GetId()};
        PropertyList values = MakeEntry(u"Apple"_s, 1).GetProperties();
        values[2] = u"none"_s;
        QVERIFY(store.WriteRecord(diet, 0, values));
        values.resize(2);
        QVERIFY(store.WriteRecord(diet, 0, values));
        Damage(Database().Diet(), 0);
        Change("DROP TABLE usage_1");
        QVERIFY(Database().Profiles().Open(u"Ann"_s, true));
        const auto count = [this](const QString& name) {
            const CUseCounts& counts = Database().Usage().CountsOf(Database().Profiles().GetId());
            const auto found = counts.find(UseKeyOf(kFoods, u"Fruit", name, u"raw"));
            return found == counts.end() ? 0 : found->second.total;
        };
        QCOMPARE(count(u"Apple"_s), 0);
        QVERIFY(Database().Diet().Write(-1, MakeEntry(u"Banana"_s, 1)));
        QCOMPARE(count(u"Banana"_s), 2);
        QCOMPARE(Query("SELECT sum(count) FROM usage_1 WHERE owner>0"), 5);
        QCOMPARE(Query("SELECT count FROM usage_1 WHERE kind=-1 AND meal=-1 AND name=''"), 3);
    }

  private:
    int Random(int below) { return static_cast<int>(m_random() % below); }
    QString RandomName() {
        const QStringList words = {u"Apple"_s, u"berry"_s, u"Soup"_s, u"thin"_s, u"Salad"_s};
        return words[Random(5)] + u" "_s + words[Random(5)];
    }
    void ChangeDiary() {
        CItemDatabase<CDietEntry>& diet = Database().Diet();
        CRecordGroup group(Database().GetStore());
        for (int i = Random(3); i >= 0; --i) {
            const int count = diet.Count();
            const int position = count > 0 ? Random(count) : -1;
            const CDietEntry entry = MakeEntry(RandomName(), Random(7), Random(60));
            if (Random(3) == 0 && position >= 0) {
                QVERIFY(diet.Delete(position));
            } else {
                QVERIFY(diet.Write(Random(2) == 0 ? position : -1, entry));
            }
        }
        if (Random(4) == 0) {
            group.Undo();
        } else {
            QVERIFY(group.Commit());
        }
    }
    /// As a program does that does not know of the counts.
    void EditElsewhere() {
        m_doc.reset();
        {
            CStorageEngine engine;
            CDatabaseInfo diet;
            ObjectId record = 0;
            PropertyList properties;
            QCOMPARE(engine.Mount(Path(u"v.db"_s)), int(kErrorSuccess));
            QCOMPARE(engine.FindDatabase(DietDatabaseName(u"Ann"_s), diet), int(kErrorSuccess));
            QCOMPARE(engine.SeekToPosition(diet.id, 0, record), int(kErrorSuccess));
            QCOMPARE(engine.ReadRecord(record, properties), int(kErrorSuccess));
            QCOMPARE(std::exchange(properties[4], u"Banana"_s), PropertyValue(u"Apple"_s));
            QCOMPARE(engine.ReplaceRecord(diet.id, record, properties), int(kErrorSuccess));
        }
        Reopen();
    }
    /// With the entries of the open profile.
    void CompareCounts() {
        std::unordered_map<ItemUseKey, CUseCount> expected;
        CDietEntry entry;
        for (int position = 0; Database().Diet().ReadQuietly(position, entry); ++position) {
            CUseCount& count =
                expected[UseKeyOf(static_cast<ECatalogueKind>(entry.GetKind()), entry.GetCategory(),
                                  entry.GetName(), entry.GetType())];
            ++count.total;
            if (entry.GetMeal() < kMealCount) {
                ++count.atMeal[entry.GetMeal()];
            }
        }
        const CUseCounts& counts = Database().Usage().CountsOf(Database().Profiles().GetId());
        QCOMPARE(counts.size(), expected.size());
        for (const auto& [key, count] : expected) {
            QVERIFY(counts.contains(key));
            QCOMPARE(counts.at(key).total, count.total);
            QCOMPARE(counts.at(key).atMeal, count.atMeal);
        }
    }

    std::mt19937 m_random;
    qint32 m_fruit = 0;
};

QTEST_GUILESS_MAIN(TestUseCounts)
#include "TestUseCounts.moc"

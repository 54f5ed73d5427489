// The search over the catalogue follows every change.
#include <random>

#include "catalogue/exchange/CsvExchange.h"
#include "catalogue/items/CatalogueRules.h"
#include "catalogue/pick/SearchItems.h"
#include "support/ComposedSamples.h"
#include "support/DataRows.h"

using namespace Qt::StringLiterals;

namespace {
const QDate kDay(2026, 5, 31);
}  // namespace

class TestCatalogueSearch : public CCatalogueTest {
    Q_OBJECT

  private slots:
    void init() {
        MakeVolume();
        m_random.seed(20260531);
        m_fruit = AddCategory(Database(), u"Fruit"_s);
        m_soups = AddCategory(Database(), u"Soups"_s);
    }
    void cleanup() { DropVolume(); }

    void aDamagedItemHidesNoOther() {
        AddFood(m_fruit, u"Apple"_s);
        AddFood(m_fruit, u"Apple pie"_s);
        QVERIFY(Database().ViewSettings(kFoods).Save(CViewSettings()));
        Damage(Database().Foods(), 0);
        QCOMPARE(Find(u"apple"_s), QStringList(u"Apple pie"_s));
    }

    void theIndexFollowsEveryChange() {
        (void)Find(u"apple"_s);
        for (int step = 0; step < 250; ++step) {
            ChangeSomething();
            if (step % 3 == 0) {
                CompareWithFreshIndex();
            }
        }
        QVERIFY(Find(u"apple"_s).size() > 3);
        m_messages->TakeShown();
    }

    void anIndexMadeInStepsIsTheSame() {
        {
            CRecordGroup group(Database().GetStore());
            for (int i = 0; i < 10200; ++i) {
                AddFood(i % 2 == 0 ? m_fruit : m_soups, u"Apple"_s, QString::number(i));
            }
            QVERIFY(group.Commit());
        }
        AddComposed(Database(), kMenus, 1, u"Apple menu"_s);
        Damage(Database().Foods(), 10050);
        QVERIFY(Database().Search().PrepareSome());
        CompareWithFreshIndex();
        QVERIFY(!Database().Search().PrepareSome());
        // A change in between moves what is not read yet.
        Reopen();
        for (int step = 0; Database().Search().PrepareSome(); ++step) {
            if (step == 0) {
                QVERIFY(Database().DeleteItem(kFoods, 0));
            }
        }
        CompareWithFreshIndex();
        // So many changes that all is read again, which takes steps too.
        {
            CRecordGroup group(Database().GetStore());
            CFoodItem food;
            for (int position = 0; position < 4000; ++position) {
                QVERIFY(Database().Foods().Read(position, food));
                food.SetName(u"Pear"_s);
                QVERIFY(Database().Foods().Write(position, food));
            }
            QVERIFY(group.Commit());
        }
        QVERIFY(Database().Search().PrepareSome());
        CompareWithFreshIndex();
    }

    void anImportIsFoundWholeOrPartly_data() { AddRows<bool>({{"small", false}, {"large", true}}); }
    void anImportIsFoundWholeOrPartly() {
        const auto& [isLarge] = DataRow<bool>();
        AddFood(m_fruit, u"Apple"_s);
        QCOMPARE(Find(u"apple"_s).size(), 1);
        QByteArray file = "<Foods>\r\n";
        for (int i = 0; i < (isLarge ? 1100 : 20); ++i) {
            file += "1,Berries,Berry," + QByteArray::number(i) + ',' +
                    QByteArray("1,").repeated(kNutrientCount) + "cup,1,\r\n";
        }
        const QString path = Path(u"foods.csv"_s);
        Save(path, file);
        QVERIFY(ImportCatalogueFile(Database(), kFoods, EDuplicatePolicy::DoNotCheck, path));
        m_messages->TakeShown();
        QCOMPARE(Find(u"berries"_s).size(), isLarge ? 1100 : 20);
        const auto note = [this](const QString& text) {
            return SearchItems(*m_doc, {.text = text}).note;
        };
        QCOMPARE(note(u"berries"_s), isLarge ? u"The best 50 of 1100"_s : QString());
        QCOMPARE(note(u"berxy"_s),
                 isLarge ? u"Similar words: The best 50 of 1100"_s : u"Similar words:"_s);
        QCOMPARE(Find(u"apple"_s).size(), 1);
        CompareWithFreshIndex();
    }

    void whatAProfileEatsComesFirst() {
        for (const QString& name : {u"Apple"_s, u"Banana"_s, u"Cherry"_s, u"Date"_s, u"Fig"_s}) {
            AddFood(m_fruit, name);
        }
        QVERIFY(Database().Profiles().Open(u"Ann"_s, true));
        // Eaten at meal 1 and at meal 2, in the order of time: the date last.
        int minute = 0;
        for (const auto& [name, meal] : {std::pair{u"Banana"_s, 1},
                                         {u"Banana"_s, 1},
                                         {u"Cherry"_s, 2},
                                         {u"Apple"_s, 2},
                                         {u"Eaten out"_s, 2},
                                         {u"Date"_s, 2}}) {
            QVERIFY(Database().Diet().Write(-1, MakeFruitEntry(kDay, name, meal, minute++)));
        }
        const auto offered = [this](int meal) {
            return Names({.profile = Database().Profiles().GetId(), .meal = meal});
        };
        QCOMPARE(offered(-1), (QStringList{u"Banana"_s, u"Date"_s, u"Apple"_s, u"Cherry"_s}));
        QCOMPARE(offered(2), (QStringList{u"Date"_s, u"Apple"_s, u"Cherry"_s, u"Banana"_s}));
        QCOMPARE(offered(1).first(), u"Banana"_s);
        QCOMPARE(Names({}), QStringList());
        // Among names that match equally well, and only there.
        QCOMPARE(Names({.text = u"fruit"_s, .profile = Database().Profiles().GetId()}),
                 (QStringList{u"Banana"_s, u"Date"_s, u"Apple"_s, u"Cherry"_s, u"Fig"_s}));
        QCOMPARE(Names({.text = u"fruit"_s}).first(), u"Fig"_s);
        // Another profile has its own habits.
        QVERIFY(Database().Profiles().Open(u"Bob"_s, true));
        QCOMPARE(offered(1), QStringList());
    }

  private:
    void AddFood(qint32 category, const QString& name, const QString& type = u"raw"_s) {
        QVERIFY(Database().Foods().Write(-1, MakeFood(category, name, type)));
    }
    QStringList Names(const CSearchQuery& query) {
        QStringList names;
        for (const CSearchMatch& match : Database().Search().Find(query).best) {
            CCatalogueItem item(match.kind);
            CItemDatabaseBase& items = Database().Items(match.kind);
            names.append(items.Read(items.PositionOf(match.record), item) ? item.GetName()
                                                                          : u"?"_s);
        }
        return names;
    }
    QStringList Find(const QString& text) { return Names({.text = text}); }

    int Random(int below) { return static_cast<int>(m_random() % below); }
    QString RandomName() {
        const QStringList words = {u"Apple"_s, u"berry"_s, u"Soup"_s, u"thin"_s, u"Salad"_s};
        return words[Random(5)] + u" "_s + words[Random(5)];
    }
    /// One command on the catalogue, or several as a unit of work that may be undone.
    void ChangeSomething() {
        const ECatalogueKind kind = std::array{kFoods, kMenus, kRecipes}.at(Random(3));
        CRecordGroup group(Database().GetStore());
        for (int i = Random(3); i >= 0; --i) {
            ChangeOne(kind);
        }
        if (Random(4) == 0) {
            group.Undo();
        } else {
            QVERIFY(group.Commit());
        }
    }
    void ChangeOne(ECatalogueKind kind) {
        CItemDatabaseBase& items = Database().Items(kind);
        const int count = Database().Catalogue().CountItems(kind);
        const int position = count > 0 ? Random(count) : -1;
        CCatalogueItem item(kind);
        const int command = Random(8);
        if (command == 0 && kind == kFoods) {
            CCategory category;
            const auto categories = Database().Categories().List(kFoods);
            const CCategoryEntry& entry = categories[Random(int(categories.size()))];
            QVERIFY(Database().Categories().Read(entry.position, category));
            category.SetName(RandomName() + QString::number(Random(100)));
            QVERIFY(Database().Categories().AddOrUpdate(entry.position, category));
        } else if (command == 1 && kind == kFoods && Random(4) == 0) {
            m_messages->answer = true;
            const qint32 id = AddCategory(Database(), RandomName() + QString::number(Random(100)));
            (void)CCatalogueRules(Database(), kFoods).DeleteCategory(Random(2) == 0 ? id : m_soups);
        } else if (command < 4 || position < 0) {
            if (kind == kFoods) {
                AddFood(Random(2) == 0 ? m_fruit : m_soups, RandomName(), RandomName());
            } else {
                const qint32 id = AddComposed(Database(), kind, 1 + Random(2), RandomName());
                QVERIFY(AddPart(Database(), kind, id, RandomName()));
            }
        } else if (command == 4) {
            QVERIFY(Database().DeleteItem(kind, position));
        } else {
            QVERIFY(items.Read(position, item));
            if (command == 5) {
                item.SetCategoryId(1 + Random(3));
            } else {
                item.SetName(RandomName());
            }
            QVERIFY(items.Write(position, item));
        }
    }
    void CompareWithFreshIndex() {
        CCatalogueSearch fresh(Database().GetStore(), Database().Catalogue(),
                               Database().Categories(), Database().Usage());
        for (const QString& text : {u"apple"_s, u"b"_s, u"soup thin"_s, u"salad berry apple"_s,
                                    u"appel"_s, u"fruits"_s, u"soups"_s, u"5"_s}) {
            const CSearchMatches found = Database().Search().Find({.text = text, .limit = 300});
            const CSearchMatches expected = fresh.Find({.text = text, .limit = 300});
            QCOMPARE(found.best, expected.best);
            QCOMPARE(found.found, expected.found);
            QCOMPARE(found.total, expected.total);
        }
    }

    std::mt19937 m_random;
    qint32 m_fruit = 0;
    qint32 m_soups = 0;
};

QTEST_GUILESS_MAIN(TestCatalogueSearch)
#include "TestCatalogueSearch.moc"

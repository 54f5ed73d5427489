// Commands on several records: written as one unit of work, and record by record where that fails.
#include "DiaryFixture.h"

#include "catalogue/items/CatalogueRules.h"
#include "catalogue/items/ComposedForm.h"
#include "diary/PurgeRules.h"
#include "diary/WeightRules.h"
#include "support/ComposedSamples.h"
#include "support/Files.h"

namespace {
constexpr int kPageBytes = 8192;

/// What has become of the page that holds the record of "Cid".
enum class EDamage : char {
    Unreadable = 0,  ///< its first byte, the kind of page
    Fixed = 1,       ///< the place of its first free block: nothing on it can change its size
};

struct CCommandCase {
    const char* name;
    EDamage damage;
    std::function<void(int person)> add;
    std::function<int()> run;       ///< what its command returns
    std::function<QString()> left;  ///< what the command has not touched
    const char* leftAfterFailure;
    const char* said;  ///< in the failure
    int returned;      ///< in the failure
};

const QStringList kPeople = {u"Ann"_s, u"Bob"_s, u"Cid"_s, u"Dan"_s};
constexpr int kCid = 2;

/// As they stand in the file.
QByteArray InFile(const QString& text) {
    return {reinterpret_cast<const char*>(text.utf16()), text.size() * 2};
}
QByteArray InFile(double number) {
    return {reinterpret_cast<const char*>(&number), sizeof(number)};
}

double WeightKgOf(int person) {
    return 70.1 + person;
}
}  // namespace

class TestUnitsOfWork : public CDiaryTest {
    Q_OBJECT

  private slots:
    void init() {
        MakeDiary();
        m_high = AddCategory(Database(), u"High"_s);
        m_menus = AddCategory(Database(), u"Menus"_s, kMenus);
        m_menu = AddComposed(Database(), kMenus, m_menus, u"Menu"_s);
    }
    void cleanup() { DropVolume(); }

    void whatWasDoneBeforeAFailureStays_data() { AddCases(); }
    void whatWasDoneBeforeAFailureStays() {
        const CCommandCase command = Case();
        AddOnPagesOfTheirOwn(command);
        DamagePagesOfCid(command.damage);
        QCOMPARE(command.run(), command.returned);
        QCOMPARE(m_messages->Said(), QLatin1StringView(command.said));
        QCOMPARE(command.left(), QLatin1StringView(command.leftAfterFailure));
        OpenAnn();
        QCOMPARE(command.left(), QLatin1StringView(command.leftAfterFailure));
    }

  private:
    std::vector<CCommandCase> Cases() {
        using enum EDamage;
        return {
            {"delete diet entries", Fixed, [this](int person) { AddMeal(person); },
             [this] { return DeleteDietEntries(*m_doc, m_meals); }, [this] { return Meals(); },
             "Cid,Dan", "Cannot delete record. Error=1392|Cannot delete entry.", 2},
            {"move diet entries", Unreadable, [this](int person) { AddMeal(person); },
             [this] {
                 return MoveDietEntries(*m_doc, m_meals, {ToFileTime(kDay.addDays(1), {9, 0}), 4});
             },
             [this] { return Meals(); }, "?,Dan", "Cannot move entry.", 2},
            {"delete weights", Fixed, [this](int person) { AddWeightOf(person); },
             [this] { return DeleteWeights(*m_doc, m_weights); }, [this] { return Weights(); },
             "Cid", "Cannot delete record. Error=1392|Cannot delete weight.", 3},
            {"purge", Fixed,
             [this](int person) {
                 AddMeal(person);
                 AddWeightOf(person);
                 AddDoneBy(person);
             },
             [this] {
                 return PurgeDiaries(Database(), {kDay, kDay, true, true, true});
             },
             [this] { return Meals() + u'|' + Weights() + u'|' + Done(); },
             "Bob,Cid|Bob,Cid|Bob,Cid",
             "Cannot delete record. Error=1392|Cannot delete record. Error=1392|"
             "Cannot delete record. Error=1392|"
             "Total purged:\n\nDiet entries: 3\nWeight entries: 3\nExersises: 3\n\n",
             false},
            {"rename foods", Fixed,
             [this](int person) {
                 QVERIFY(
                     Database().Foods().Write(-1, MakeFood(m_high, u"Food"_s, kPeople[person])));
             },
             [this] { return Foods().RenameItems(m_high, u"Food"_s, u"Supper"_s).size(); },
             [this] { return FoodNames(); }, "Supper,Supper,Food,Food",
             "Cannot add food (error# 1392).|Cannot rename foods.", 0},
            {"delete menus", Fixed,
             [this](int person) {
                 const qint32 id = AddComposed(Database(), kMenus, m_menus, kPeople[person]);
                 QVERIFY(AddPart(Database(), kMenus, id, u"Milk"_s));
             },
             [this] { return CCatalogueRules(Database(), kMenus).Delete(Listed(kMenus, m_menus)); },
             [this] { return MenuNames(); }, "Menu,Ann,Bob,Cid,Milk,Milk,Milk",
             "Cannot delete record. Error=1392|Cannot delete menu.", 1},
            {"delete components", Fixed,
             [this](int person) { QVERIFY(AddPart(Database(), kMenus, m_menu, kPeople[person])); },
             [this] {
                 return CComposedForm(*m_doc, kMenus, 0, m_menus).DeleteComponents({0, 1, 2, 3});
             },
             [this] { return MenuNames(); }, "Menu,Ann,Bob,Cid",
             "Cannot delete record. Error=1392|Cannot delete food.", true},
            {"delete a category", Fixed, [this](int person) { AddFoodOf(person); },
             [this] { return Foods().DeleteCategory(m_high); },
             [this] { return FoodNames() + u'|' + Database().Categories().NameOf(kFoods, m_high); },
             "Ann,Bob,Cid|", "Cannot delete record. Error=1392|Cannot delete foods from category.",
             true},
        };
    }
    void AddCases() {
        QTest::addColumn<int>("row");
        const std::vector<CCommandCase> cases = Cases();
        for (int row = 0; row < static_cast<int>(cases.size()); ++row) {
            QTest::newRow(cases[row].name) << row;
        }
    }
    CCommandCase Case() {
        QFETCH(int, row);
        return Cases()[row];
    }

    /// Each behind a record that leaves no room for two on a page.
    void AddOnPagesOfTheirOwn(const CCommandCase& command) {
        const CRecordGroup group(Database().GetStore());
        for (int person = 0; person < kPeople.size(); ++person) {
            AddFiller();
            command.add(person);
        }
    }
    void AddFiller() {
        CCategory filler;
        filler.SetKind(kExercises);
        filler.SetName(QString::number(Database().Categories().Count()));
        filler.SetLargePicture(QByteArray(kPageBytes * 3 / 5, 'x'));
        QVERIFY(Database().Categories().AddOrUpdate(-1, filler));
    }
    void DamagePagesOfCid(EDamage damage) {
        List();
        m_doc.reset();
        QByteArray bytes = Load(Path(u"v.db"_s));
        for (const QByteArray& text : {InFile(kPeople[kCid]), InFile(WeightKgOf(kCid))}) {
            if (const qsizetype at = bytes.indexOf(text); at >= 0) {
                const qsizetype page = at / kPageBytes * kPageBytes;
                bytes[page + static_cast<int>(damage)] = damage == EDamage::Fixed ? '\x7f' : '\0';
            }
        }
        Save(Path(u"v.db"_s), bytes);
        OpenAnn();
    }
    void OpenAnn() {
        Reopen();
        QVERIFY(m_doc->SetActiveProfile(u"Ann"_s));
    }

    void AddMeal(int person) { AddEntry(kPeople[person], QTime(person, 0)); }
    void AddWeightOf(int person) {
        QVERIFY(
            Database().Weight().Write(-1, MakeWeight(kDay, QTime(person, 0), WeightKgOf(person))));
    }
    void AddDoneBy(int person) { AddDone(kPeople[person], kDay, QTime(person, 0), 1, 1); }
    void AddFoodOf(int person) {
        QVERIFY(Database().Foods().Write(-1, MakeFood(m_high, kPeople[person], u"t"_s)));
    }

    /// Texts of the records of a database; "?" for one that cannot be read.
    template <typename Item>
    QString Texts(CItemDatabase<Item>& database, auto textOf) {
        QStringList texts;
        for (int position = 0; position < database.Count(); ++position) {
            Item item;
            texts.append(database.ReadQuietly(position, item) ? textOf(item) : u"?"_s);
        }
        texts.removeAll(QString());
        return texts.join(u',');
    }
    QString Meals() {
        return Texts(Database().Diet(), [](const auto& entry) {
            return DateOf(entry.GetMoment()) == kDay ? entry.GetName() : QString();
        });
    }
    QString Weights() {
        return Texts(Database().Weight(),
                     [](const auto& entry) { return kPeople[TimeOf(entry.GetMoment()).hour()]; });
    }
    QString Done() {
        return Texts(Database().Exercises(), [](const auto& done) { return done.GetName(); });
    }
    QString FoodNames() {
        return Texts(Database().Foods(), [this](const auto& food) {
            return food.GetCategoryId() == m_high ? food.GetName() : QString();
        });
    }
    QString MenuNames() {
        return Texts(Database().Menus(), [](const auto& menu) { return menu.GetName(); });
    }
    void List() {
        const CListQuery day = {FirstMomentOf(kDay), LastMomentOf(kDay)};
        m_meals = ReadEntries(Database().Diet(), day).entries;
        m_weights = ReadEntries(Database().Weight(), day).entries;
    }
    CCatalogueRules Foods() { return {Database(), kFoods}; }
    CCatalogueRules::Entries Listed(ECatalogueKind kind, qint32 category) {
        return Database().Catalogue().FillCategoryList(kind, category).entries;
    }

    qint32 m_high = 0;
    qint32 m_menus = 0;
    qint32 m_menu = 0;
    // Listed before any damage.
    ListedEntries<CDietEntry> m_meals;
    ListedEntries<CWeightEntry> m_weights;
};

QTEST_GUILESS_MAIN(TestUnitsOfWork)
#include "TestUnitsOfWork.moc"

// Every command of the rules is one step with its name, which is undone and redone as a whole.
#include <QTest>

#include "app/UndoRules.h"
#include "catalogue/exchange/CsvExchange.h"
#include "catalogue/items/CatalogueRules.h"
#include "catalogue/items/ComposedForm.h"
#include "diary/DietRules.h"
#include "diary/PurgeRules.h"
#include "diary/weight/WeightRules.h"
#include "exercise/ExerciseRules.h"
#include "support/CatalogueTest.h"
#include "support/DataRows.h"
#include "support/Files.h"

using namespace Qt::StringLiterals;

namespace {
const QDate kDay{2026, 6, 1};
/// Records of the databases that undo concerns.
using CContents = std::vector<std::pair<ObjectId, PropertyList>>;
}  // namespace

class TestUndoRules : public CCatalogueTest {
    Q_OBJECT

  private slots:
    void init() {
        MakeVolume();
        CProfileSettings profile = CProfileSettings::ForNewProfile(kDay);
        profile.user.name = u"Ann"_s;
        QVERIFY(m_doc->CreateProfile(profile) && m_doc->LoadProfile(u"Ann"_s));
        const qint32 fruit = AddCategory(Database(), u"Fruit"_s);
        AddCategory(Database(), u"Soups"_s);
        AddCategory(Database(), u"Week"_s, kMenus);
        for (const QString& type : {u"raw"_s, u"dried"_s, u"stewed"_s}) {
            QVERIFY(Database().Foods().Write(-1, MakeFood(fruit, u"Apple"_s, type)));
        }
        CMenuItem menu;
        menu.SetParentId(1);
        menu.SetName(u"Lunch"_s);
        menu.SetItemId(Database().Composed().AllocateItemId(kMenus));
        QVERIFY(Database().Menus().Write(-1, menu));
        for (int i = 0; i < 3; ++i) {
            CDietEntry eaten;
            eaten.SetMoment(FirstMomentOf(kDay));
            eaten.SetName(u"Tea"_s);
            CWeightEntry weight;
            weight.SetMoment(FirstMomentOf(kDay));
            CExerciseEntry exercise;
            exercise.SetMoment(FirstMomentOf(kDay));
            exercise.SetName(u"Row"_s);
            QVERIFY(Database().Diet().Write(-1, eaten) && Database().Weight().Write(-1, weight) &&
                    Database().Exercises().Write(-1, exercise));
        }
    }
    void cleanup() { m_doc.reset(); }

    void eachCommandIsAStep() {
        for (const CCommand& command : m_commands) {
            const CContents before = Contents();
            const std::size_t steps = Database().GetStore().History().ListSteps().size();
            QVERIFY2(command.run(), command.name);
            const CContents after = Contents();
            QVERIFY2(after != before, command.name);
            QCOMPARE(Database().GetStore().History().ListSteps().size(), steps + 1);
            const auto step = NextStep(Database(), EUndo::Undo, std::nullopt);
            QCOMPARE(step->name, QString::fromLatin1(command.name));
            QVERIFY(RevertNext(Database(), EUndo::Undo, step->scope));
            QVERIFY2(Contents() == before, command.name);
            QCOMPARE(NextName(Database(), EUndo::Redo, step->scope), step->name);
            QVERIFY(RevertNext(Database(), EUndo::Redo, step->scope));
            QVERIFY2(Contents() == after, command.name);
        }
        QVERIFY(ClearHistory(Database(), kCatalogueScope));
        QVERIFY(!RevertNext(Database(), EUndo::Undo, kCatalogueScope));
        QVERIFY(m_messages->Said().endsWith(u"There is nothing to undo."_s));
        QVERIFY(RevertNext(Database(), EUndo::Undo, Database().Profiles().GetId()));
    }

    // The dialog stores its components at once, each in a unit of its own.
    void aDialogIsOneStep() {
        const CContents before = Contents();
        const int steps = StepCount();
        {
            CComposedForm form(*m_doc, kMenus, -1, 1);
            QVERIFY(form.AddComponent(Chosen()) && form.AddComponent(Chosen()));
            QCOMPARE(NextName(Database(), EUndo::Undo, kCatalogueScope), u"addition of a menu"_s);
            form.Fields().name = u"Supper"_s;
            QVERIFY(form.Confirm());
        }
        QCOMPARE(StepCount(), steps + 1);
        QCOMPARE(NextName(Database(), EUndo::Undo, kCatalogueScope), u"addition of Supper"_s);
        QVERIFY(RevertNext(Database(), EUndo::Undo, kCatalogueScope));
        QCOMPARE(Contents(), before);
        {
            CComposedForm form(*m_doc, kMenus, -1, 1);
            QVERIFY(form.AddComponent(Chosen()));
            QVERIFY(form.DeleteComponents({0}));
        }
        QCOMPARE(Contents(), before);
        QCOMPARE(StepCount(), steps);
    }

    void whatIsTooLargeIsAskedBefore_data() {
        AddRows<int>({{"purge", 0}, {"category", 1}, {"import", 2}});
    }
    void whatIsTooLargeIsAskedBefore() {
        const int command = std::get<0>(DataRow<int>());
        QByteArray file = "<Foods>\r\n";
        for (const char* type : {"raw", "dried", "stewed"}) {
            file += QByteArray("1,Fruit,Apple,") + type + ',' +
                    QByteArray("1,").repeated(kNutrientCount) + "cup,1,\r\n";
        }
        Save(Path(u"foods.csv"_s), file);
        const auto run = [this, command] {
            return command == 0 ? PurgeDiaries(Database(), {kDay, kDay, true, true, true})
                   : command == 1
                       ? CCatalogueRules(Database(), kFoods).DeleteCategory(1)
                       : ImportCatalogueFile(Database(), kFoods, EDuplicatePolicy::Overwrite,
                                             Path(u"foods.csv"_s));
        };
        const qint64 scope = command == 0 ? Database().Profiles().GetId() : kCatalogueScope;
        Database().GetStore().History().SetLimits({.steps = 100, .bytes = 300});
        const CContents before = Contents();
        m_messages->answers = command == 2 ? QList{false} : QList{true, false};
        QVERIFY(!run());
        QCOMPARE(m_messages->asked.last(), u"This cannot be undone. Do you want to go on?"_s);
        QCOMPARE(Contents(), before);
        m_messages->TakeShown();
        QVERIFY(run());
        QVERIFY(Contents() != before);
        QVERIFY(!m_messages->Said().contains(u"cannot be undone"_s));
        QVERIFY(!NextStep(Database(), EUndo::Undo, scope));
    }

    void whatCannotBeRedoneIsAskedBefore() {
        QVERIFY(CCatalogueRules(Database(), kFoods).AddCategory(u"Nuts"_s) > 0);
        Database().GetStore().History().SetLimits({.steps = 100, .bytes = 70});
        const CContents before = Contents();
        m_messages->answers = {false};
        QVERIFY(!RevertNext(Database(), EUndo::Undo, kCatalogueScope));
        QCOMPARE(m_messages->asked.last(), u"This cannot be redone. Do you want to go on?"_s);
        QCOMPARE(Contents(), before);
        QVERIFY(RevertNext(Database(), EUndo::Undo, kCatalogueScope));
        QVERIFY(!NextStep(Database(), EUndo::Redo, kCatalogueScope));
    }

    // An identifier that was looked up before the undo may be that of a menu that is back.
    void aMenuThatIsBackKeepsItsIdentifier() {
        const CCategoryList menus = Database().Catalogue().FillCategoryList(kMenus, 1);
        QCOMPARE(CCatalogueRules(Database(), kMenus).Delete(menus.entries), 1);
        Reopen();
        const qint32 next = Database().Composed().AllocateItemId(kMenus);
        QVERIFY(RevertNext(Database(), EUndo::Undo, kCatalogueScope));
        CMenuItem menu;
        QVERIFY(Database().Menus().Read(0, menu));
        QCOMPARE(menu.GetItemId(), next);
        QVERIFY(Database().Composed().AllocateItemId(kMenus) > next);
    }

  private:
    struct CCommand {
        const char* name;
        std::function<bool()> run;
    };

    int StepCount() { return static_cast<int>(Database().GetStore().History().ListSteps().size()); }
    CCatalogueRules::Entries Listed(qint32 category) {
        return Database().Catalogue().FillCategoryList(kFoods, category).entries;
    }
    template <typename Entry>
    ListedEntries<Entry> All(CItemDatabase<Entry>& diary, std::size_t count) {
        ListedEntries<Entry> entries =
            ReadEntries(diary, {FirstMomentOf(kDay), LastMomentOf(kDay.addYears(1))}).entries;
        entries.resize(std::min(count, entries.size()));
        return entries;
    }
    CChosenFood Chosen() {
        CChosenFood food;
        food.item.SetName(u"Egg"_s);
        return food;
    }
    CContents Contents() {
        CContents contents;
        for (CItemDatabaseBase* database : std::initializer_list<CItemDatabaseBase*>{
                 &Database().Foods(), &Database().Menus(), &Database().Categories(),
                 &Database().Diet(), &Database().Weight(), &Database().Exercises()}) {
            database->ForEachFrom(0, [&](int position, PropertyList& properties) {
                contents.emplace_back(database->RecordAt(position), properties);
                return true;
            });
        }
        return contents;
    }

    const std::vector<CCommand> m_commands = {
        {"addition of Egg", [this] { return AddDietEntry(*m_doc, kDay, 1, Chosen()); }},
        {"edit of Egg",
         [this] { return EditDietEntry(*m_doc, All(Database().Diet(), 1).front(), Chosen()); }},
        {"duplicate of Tea",
         [this] { return DuplicateDietEntry(*m_doc, All(Database().Diet(), 1)); }},
        {"move of 2 entries",
         [this] {
             const CDietPlace place{FirstMomentOf(kDay.addDays(9)), 3};
             return MoveDietEntries(*m_doc, All(Database().Diet(), 2), place) == 2;
         }},
        {"delete of Tea", [this] { return DeleteDietEntries(*m_doc, All(Database().Diet(), 1)); }},
        {"delete of 2 entries",
         [this] { return DeleteDietEntries(*m_doc, All(Database().Diet(), 2)) == 2; }},
        {"addition of a weight",
         [this] { return AddWeight(*m_doc, All(Database().Weight(), 1).front().entry); }},
        {"edit of a weight",
         [this] {
             const auto weight = All(Database().Weight(), 2).back();
             CWeightEntry edited = weight.entry;
             edited.SetWeightKg(70);
             return EditWeight(*m_doc, weight.record, edited);
         }},
        {"delete of a weight",
         [this] { return DeleteWeights(*m_doc, All(Database().Weight(), 1)) == 1; }},
        {"delete of 2 weights",
         [this] { return DeleteWeights(*m_doc, All(Database().Weight(), 2)) == 2; }},
        {"addition of Row",
         [this] { return AddExercise(Database(), All(Database().Exercises(), 1).front().entry); }},
        {"edit of Swim",
         [this] {
             const auto exercise = All(Database().Exercises(), 2).back();
             CExerciseEntry edited = exercise.entry;
             edited.SetName(u"Swim"_s);
             return EditExercise(Database(), exercise.record, edited);
         }},
        {"delete of 3 exercises",
         [this] { return DeleteExercises(Database(), All(Database().Exercises(), 3)) == 3; }},
        {"purge",
         [this] {
             return PurgeDiaries(Database(), {kDay, kDay.addYears(1), true, true, true});
         }},
        {"addition of category Nuts",
         [this] { return CCatalogueRules(Database(), kFoods).AddCategory(u"Nuts"_s) == 3; }},
        {"rename of category Nuts",
         [this] { return CCatalogueRules(Database(), kFoods).RenameCategory(3, u"Seeds"_s); }},
        {"duplicate of Apple, dried",
         [this] {
             return CCatalogueRules(Database(), kFoods).Duplicate({Listed(1).front()}) >= 0;
         }},
        {"rename of Apple",
         [this] {
             return CCatalogueRules(Database(), kFoods).RenameItems(1, u"Apple"_s, u"Pear"_s) ==
                    u"Pear"_s;
         }},
        {"move of 4 foods",
         [this] {
             return CCatalogueRules(Database(), kFoods).Move(Listed(1), {0, 2, u"Soups"_s}) == 4;
         }},
        {"delete of Pear, dried",
         [this] { return CCatalogueRules(Database(), kFoods).Delete({Listed(2).front()}) == 1; }},
        {"delete of category Soups",
         [this] { return CCatalogueRules(Database(), kFoods).DeleteCategory(2); }},
        {"import of foods",
         [this] {
             return ImportCatalogueFile(Database(), kFoods, EDuplicatePolicy::Overwrite,
                                        QStringLiteral(VELMORA_STARTER_FOODS));
         }},
    };
};

QTEST_GUILESS_MAIN(TestUndoRules)
#include "TestUndoRules.moc"

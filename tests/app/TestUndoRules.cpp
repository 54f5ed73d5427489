// Every command of the rules is one step with its name, which is undone and redone as a whole.
#include <QTest>

#include "app/UndoRules.h"
#include "catalogue/exchange/CsvExchange.h"
#include "catalogue/items/CatalogueRules.h"
#include "catalogue/items/ComposedForm.h"
#include "diary/CopyRules.h"
#include "diary/DiaryFixture.h"
#include "diary/PurgeRules.h"
#include "diary/QuickEntry.h"
#include "diary/weight/WeightRules.h"
#include "exercise/ExerciseRules.h"
#include "support/ComposedSamples.h"
#include "support/DataRows.h"
#include "support/Files.h"

namespace {
/// Records of the databases that undo concerns.
using CContents = std::vector<std::pair<ObjectId, PropertyList>>;
}  // namespace

class TestUndoRules : public CDiaryTest {
    Q_OBJECT

  private slots:
    void init() {
        MakeDiary();
        const qint32 fruit = AddCategory(Database(), u"Fruit"_s);
        AddCategory(Database(), u"Soups"_s);
        AddCategory(Database(), u"Week"_s, kMenus);
        for (const QString& type : {u"raw"_s, u"dried"_s, u"stewed"_s}) {
            QVERIFY(Database().Foods().Write(-1, MakeFood(fruit, u"Apple"_s, type)));
        }
        QVERIFY(AddComposed(Database(), kMenus, 1, u"Lunch"_s) != 0);
        for (int i = 0; i < 3; ++i) {
            AddEntry(u"Tea"_s, QTime(0, 0));
            AddDone(u"Row"_s, kDay, QTime(0, 0), 30, 100);
            QVERIFY(Database().Weight().Write(-1, MakeWeight(kDay, QTime(0, 0), 80)));
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

    // Nothing of it is kept, and the other steps are as they were.
    void anUnconfirmedDialogIsNoStep_data() {
        AddRows<EEnd>({{"cancelled", EEnd::Cancelled},
                       {"cancelled without components", EEnd::Emptied},
                       {"killed", EEnd::Killed},
                       {"cancelled on a full disk", EEnd::Full},
                       {"cancelled on a full disk, then opened again", EEnd::FullAndKilled}});
    }
    void anUnconfirmedDialogIsNoStep() {
        const EEnd end = std::get<0>(DataRow<EEnd>());
        QVERIFY(Rules().AddCategory(u"Nuts"_s) > 0);
        Database().GetStore().History().SetLimits({.steps = StepCount(), .bytes = 1 << 20});
        QVERIFY(RevertNext(Database(), EUndo::Undo, kCatalogueScope));
        const CContents before = Contents();
        const QStringList steps = Steps();
        QByteArray killed;
        {
            std::optional<CFileSizeLimit> full;
            CComposedForm form(*m_doc, kMenus, -1, 1);
            QVERIFY(form.AddComponent(Chosen()) && form.AddComponent(Chosen()));
            QVERIFY(end != EEnd::Emptied || form.DeleteComponents({0, 1}));
            killed = Load(Path(u"v.db"_s));
            if (end == EEnd::Full || end == EEnd::FullAndKilled) {
                full.emplace(1);
            }
        }
        if (end == EEnd::Full) {
            QVERIFY(m_messages->Said().contains(u"Cannot delete record."_s));
            QCOMPARE(NextName(Database(), EUndo::Undo, kCatalogueScope), u"addition of a menu"_s);
            QVERIFY(RevertNext(Database(), EUndo::Undo, kCatalogueScope));
            QCOMPARE(Contents(), before);
            return;
        }
        if (end == EEnd::Killed) {
            m_doc.reset();
            Save(Path(u"v.db"_s), killed);
        }
        if (end == EEnd::Killed || end == EEnd::FullAndKilled) {
            Reopen();
            QVERIFY(m_doc->LoadProfile(u"Ann"_s));
        }
        QCOMPARE(Contents(), before);
        QCOMPARE(Steps(), steps);
        QVERIFY(RevertNext(Database(), EUndo::Redo, kCatalogueScope));
    }

    // Whether it is about the diaries, and whether it asks a question of its own as well.
    void whatIsTooLargeIsAskedBefore_data() {
        AddRows<bool, bool, Run>({
            {"purge", true, true,
             [this] {
                 return PurgeDiaries(Database(), {kDay, kDay, true, true, true});
             }},
            {"category", false, true, [this] { return Rules().DeleteCategory(1); }},
            {"import", false, false, [this] { return Import(kFoods, Path(u"foods.csv"_s)); }},
            {"delete", false, true, [this] { return Rules().Delete(Listed(1)) > 0; }},
            {"move", false, true,
             [this] {
                 return Rules().Move(Listed(1), {0, 2, u"Soups"_s}) > 0;
             }},
            {"rename", false, false,
             [this] { return !Rules().RenameItems(1, u"Apple"_s, u"Pear"_s).isEmpty(); }},
            {"a menu's components", false, true,
             [this] { return Rules(kMenus).Delete(Listed(1, kMenus)) > 0; }},
        });
    }
    void whatIsTooLargeIsAskedBefore() {
        const auto& [isOfDiary, asksItself, run] = DataRow<bool, bool, Run>();
        QByteArray file = "<Foods>\r\n";
        for (const char* type : {"raw", "dried", "stewed"}) {
            file += QByteArray("1,Fruit,Apple,") + type + ',' +
                    QByteArray("1,").repeated(kNutrientCount) + "cup,1,\r\n";
            QVERIFY(AddPart(Database(), kMenus, kFirstComposedId + 1, u"Egg"_s));
        }
        Save(Path(u"foods.csv"_s), file);
        const qint64 scope = isOfDiary ? Database().Profiles().GetId() : kCatalogueScope;
        // A food, a menu or an entry takes some 150 to 200 bytes: three foods are too many, as is a
        // menu of three parts.
        Database().GetStore().History().SetLimits({.steps = 100, .bytes = kSmallHistory});
        const CContents before = Contents();
        m_messages->answers = asksItself ? QList{true, false} : QList{false};
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
        QVERIFY(Rules().AddCategory(u"Nuts"_s) > 0);
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
        QCOMPARE(Rules(kMenus).Delete(Listed(1, kMenus)), 1);
        Reopen();
        const qint32 next = Database().Composed().AllocateItemId(kMenus);
        QVERIFY(RevertNext(Database(), EUndo::Undo, kCatalogueScope));
        CMenuItem menu;
        QVERIFY(Database().Menus().Read(0, menu));
        QCOMPARE(menu.GetItemId(), next);
        QVERIFY(Database().Composed().AllocateItemId(kMenus) > next);
    }

  private:
    enum class EEnd { Cancelled, Emptied, Killed, Full, FullAndKilled };
    static constexpr int kSmallHistory = 500;
    using Run = std::function<bool()>;
    struct CCommand {
        const char* name;
        Run run;
    };

    /// With those that can be redone marked.
    QStringList Steps() {
        QStringList names;
        for (const CHistoryStep& step : Database().GetStore().History().ListSteps()) {
            names.append(step.name + (step.isUndone ? u" undone"_s : QString()));
        }
        return names;
    }
    int StepCount() { return static_cast<int>(Database().GetStore().History().ListSteps().size()); }
    CCatalogueRules Rules(ECatalogueKind kind = kFoods) { return {Database(), kind}; }
    bool Import(ECatalogueKind kind, const QString& path) {
        return ImportCatalogueFile(Database(), kind, EDuplicatePolicy::Overwrite, path);
    }
    CCatalogueRules::Entries Listed(qint32 category, ECatalogueKind kind = kFoods) {
        return Database().Catalogue().FillCategoryList(kind, category).entries;
    }
    template <typename Entry>
    ListedEntries<Entry> All(CItemDatabase<Entry>& diary, std::size_t count) {
        ListedEntries<Entry> entries =
            ReadEntries(diary, {FirstMomentOf(kDay), LastMomentOf(kDay.addYears(1))}).entries;
        entries.resize(std::min(count, entries.size()));
        return entries;
    }
    ListedEntries<CDietEntry> Eaten(std::size_t count) { return All(Database().Diet(), count); }
    ListedEntries<CWeightEntry> Weighed(std::size_t count) {
        return All(Database().Weight(), count);
    }
    CChosenFood Chosen() {
        CChosenFood food;
        food.item.SetName(u"Egg"_s);
        return food;
    }
    CContents Contents() {
        CContents contents;
        for (CItemDatabaseBase* database : std::initializer_list<CItemDatabaseBase*>{
                 &Database().Foods(), &Database().Menus(), &Database().Recipes(),
                 &Database().Exlib(), &Database().Categories(), &Database().Diet(),
                 &Database().Weight(), &Database().Exercises()}) {
            database->ForEachFrom(0, [&](int position, PropertyList& properties) {
                contents.emplace_back(database->RecordAt(position), properties);
                return true;
            });
        }
        return contents;
    }

    // Further ones are undone and redone in the stories and transcripts.
    const std::vector<CCommand> m_commands = {
        {"copy of 3 entries",
         [this] {
             return CopyEntries(*m_doc, EntriesToCopy(Eaten(1)),
                                {{.day = kDay}, {.day = kDay}, {.day = kDay.addDays(1)}}) == 3;
         }},
        {"cut of 2 entries", [this] { return CutDietEntries(*m_doc, Eaten(2)) == 2; }},
        {"addition of 2 entries",
         [this] {
             CQuickEntry quick(*m_doc);
             return AddQuickItems(*m_doc, kDay, QTime(8, 0), 1, quick.Read(u"apple, 2 apples"_s)) ==
                    2;
         }},
        {"addition of Egg", [this] { return AddDietEntry(*m_doc, kDay, 1, Chosen()); }},
        {"edit of Egg", [this] { return EditDietEntry(*m_doc, Eaten(1).front(), Chosen()); }},
        {"move of 2 entries",
         [this] {
             const CDietPlace place{FirstMomentOf(kDay.addDays(9)), 3};
             return MoveDietEntries(*m_doc, Eaten(2), place) == 2;
         }},
        {"delete of Apple", [this] { return DeleteDietEntries(*m_doc, Eaten(1)); }},
        {"addition of a weight", [this] { return AddWeight(*m_doc, Weighed(1).front().entry); }},
        {"edit of a weight",
         [this] {
             const auto weight = Weighed(2).back();
             CWeightEntry edited = weight.entry;
             edited.SetWeightKg(70);
             return EditWeight(*m_doc, weight.record, edited);
         }},
        {"delete of 2 weights", [this] { return DeleteWeights(*m_doc, Weighed(2)) == 2; }},
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
        {"addition of category Nuts", [this] { return Rules().AddCategory(u"Nuts"_s) == 3; }},
        {"rename of category Nuts", [this] { return Rules().RenameCategory(3, u"Seeds"_s); }},
        {"duplicate of Apple, dried",
         [this] { return Rules().Duplicate({Listed(1).front()}) >= 0; }},
        {"rename of Apple",
         [this] { return Rules().RenameItems(1, u"Apple"_s, u"Pear"_s) == u"Pear"_s; }},
        {"move of 4 foods",
         [this] {
             return Rules().Move(Listed(1), {0, 2, u"Soups"_s}) == 4;
         }},
        {"delete of Pear, dried", [this] { return Rules().Delete({Listed(2).front()}) == 1; }},
        {"addition of Stew",
         [this] {
             CComposedForm form(*m_doc, kRecipes, -1, 1);
             form.Fields() = {1, u"Stew"_s, u"2"_s, {}};
             return form.AddComponent(Chosen()) && form.Confirm();
         }},
        {"duplicate of Stew",
         [this] { return Rules(kRecipes).Duplicate(Listed(1, kRecipes)) >= 0; }},
        {"delete of 2 recipes",
         [this] { return Rules(kRecipes).Delete(Listed(1, kRecipes)) == 2; }},
        {"import of exercises",
         [this] {
             Save(Path(u"exlib.csv"_s), "<Exercises>\r\n1,Sport,Run,fast,9,0\r\n");
             return Import(kExercises, Path(u"exlib.csv"_s));
         }},
    };
};

QTEST_GUILESS_MAIN(TestUndoRules)
#include "TestUndoRules.moc"

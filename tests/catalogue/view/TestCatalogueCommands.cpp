// The commands on categories and items, played for every kind: what is said and asked, in order,
// and what is stored in the end.
#include "catalogue/items/CatalogueRules.h"
#include "support/ComposedSamples.h"
#include "support/DataRows.h"

class TestCatalogueCommands : public CCatalogueTest {
    Q_OBJECT

  private slots:
    void theKindsSayTheSameInTheirOwnWords_data() {
        AddRows<ECatalogueKind, QString, QString, QString>({
            {"foods", kFoods, u"a category"_s, u"food"_s, u"Stew, hot"_s},
            {"menus", kMenus, u"category"_s, u"menu"_s, u"Stew"_s},
            {"recipes", kRecipes, u"category"_s, u"recipe"_s, u"Stew"_s},
        });
    }
    void theKindsSayTheSameInTheirOwnWords() {
        const auto& [kind, category, word, item] =
            DataRow<ECatalogueKind, QString, QString, QString>();
        const QString transcript =
            u"Please create %1 before adding new %2.|There is no category selected.|"
            "Category 'Here' already exists.|Please select category.|"
            "Please select category to delete.|Please enter category name.|"
            "Please select %2 to edit.|"
            "Please select only one %2 to edit.|Please select %2 to delete.|"
            "Please select %2 to move.|Cannot move %2, there is only one category.|"
            "Please select %2 to duplicate.|Please select only one %2 to duplicate.|"
            "? Do you want to create a copy of %2 '%3'?|"
            "? Are you sure you want to move %2 '%3' to category There'?|"
            "? Are you sure you want to move 2 %2s to category 'There'?|"
            "? Are you sure you want to delete %2 '%3'?|"
            "? Are you sure you want to delete 2 %2s?|"
            "? Are you sure you want to delete category 'Here' and all %2s associated with "
            "this category?"_s;
        m_messages->answer = false;
        CCatalogueRules rules(Database(), kind);
        QVERIFY(!rules.MayAddItem(-1) && !rules.DeleteCategory(-1));
        const qint32 here = rules.AddCategory(u"Here"_s);
        QCOMPARE(rules.AddCategory(u"Here"_s), -1);
        QVERIFY(!rules.MayAddItem(-1) && !rules.DeleteCategory(-1));
        QVERIFY(!rules.RenameCategory(99, u"Nowhere"_s) && !rules.RenameCategory(here, u" "_s));
        for (const char* name : {"Stew", "Tea"}) {
            AddItem(kind, here, QString::fromLatin1(name), u"hot"_s);
        }
        const CCatalogueRules::Entries both = Entries(kind, here);
        const CCatalogueRules::Entries one = {both.front()};
        QVERIFY(!rules.MayEdit({}) && !rules.MayEdit(both) && rules.MayEdit(one));
        QCOMPARE(rules.Delete({}), 0);
        QVERIFY(rules.MoveTargets({}).empty() && rules.MoveTargets(one).empty());
        QCOMPARE(rules.Duplicate({}), -1);
        QCOMPARE(rules.Duplicate(both), -1);
        rules.AddCategory(u"There"_s);
        const std::vector<CCategoryEntry> targets = rules.MoveTargets(one);
        QCOMPARE(targets.size(), 1U);
        QCOMPARE(rules.Duplicate(one), -1);
        QCOMPARE(rules.Move(one, targets[0]) + rules.Move(both, targets[0]), 0);
        QCOMPARE(rules.Delete(one) + rules.Delete(both), 0);
        QVERIFY(!rules.DeleteCategory(here));
        QCOMPARE(m_messages->Said() + u"|? "_s + m_messages->asked.join(u"|? "_s),
                 transcript.arg(category, word, item));
        QCOMPARE(Names(kind, here), u"Stew,Tea"_s);
    }

    void whatTheStoreRefusesIsSaid_data() {
        const auto composed =
            u"Cannot delete %1.|Cannot move %1 'Stew' to category There'.|"
            "Cannot load food to duplicate.|Cannot duplicate food.||"
            "Cannot delete foods from category."_s;
        AddRows<ECatalogueKind, QString>({
            {"foods", kFoods,
             u"Cannot delete food.|Cannot move food 'Stew, hot' to category There'.|"
             "Cannot load food to duplicate.|Cannot duplicate food.|Cannot rename foods.|"
             "Cannot delete foods from category."_s},
            {"menus", kMenus, composed.arg(u"menu"_s)},
            {"recipes", kRecipes, composed.arg(u"recipe"_s)},
            {"exercises", kExercises,
             u"Cannot delete exercise.||||"
             "Cannot rename exercise.|Cannot delete exercises from category."_s},
        });
    }
    /// The store's own messages with their numbers stand before these and are left out.
    void whatTheStoreRefusesIsSaid() {
        const auto& [kind, transcript] = DataRow<ECatalogueKind, QString>();
        CCatalogueRules rules(Database(), kind);
        const qint32 here = rules.AddCategory(u"Here"_s);
        const CCategoryEntry there{-1, rules.AddCategory(u"There"_s), u"There"_s};
        AddItem(kind, here, u"Stew"_s, u"hot"_s);
        const CCatalogueRules::Entries stored = Entries(kind, here);
        CCatalogueRules::Entries gone = stored;
        gone[0].position = 7;
        const bool isExercise = kind == kExercises;
        const bool renames = kind == kFoods || isExercise;
        QStringList said;
        QCOMPARE(rules.Delete(gone), 0);
        said.append(TakeLast());
        QCOMPARE(isExercise ? 0 : rules.Move(gone, there), 0);
        said.append(TakeLast());
        QCOMPARE(isExercise ? -1 : rules.Duplicate(gone), -1);
        said.append(TakeLast());
        {
            const CFileSizeLimit full(1);
            QCOMPARE(isExercise ? -1 : rules.Duplicate(stored), -1);
            said.append(TakeLast());
            QVERIFY(!renames || rules.RenameItems(here, u"Stew"_s, u"Broth"_s).isEmpty());
            said.append(TakeLast());
            QVERIFY(!rules.DeleteCategory(here));
            said.append(m_messages->shown.filter(u"from category"_s));
            said.append(TakeLast());
            QCOMPARE(rules.AddCategory(u"Elsewhere"_s), -1);
            said.append(TakeLast());
        }
        QCOMPARE(said.join(u'|'),
                 transcript + u"|Cannot delete category.|Cannot create new category"_s);
        QCOMPARE(Names(kind, here), u"Stew"_s);
    }

    void manyItemsMoveEitherWayAndKeepTheirComponents() {
        for (const ECatalogueKind kind : {kFoods, kMenus}) {
            CCatalogueRules rules(Database(), kind);
            const qint32 low = rules.AddCategory(u"Low"_s);
            const qint32 middle = rules.AddCategory(u"Middle"_s);
            const qint32 high = rules.AddCategory(u"High"_s);
            for (const char* name : {"A", "B", "C", "D"}) {
                for (const qint32 category : {low, middle, high}) {
                    AddItem(kind, category, QString::fromLatin1(name), u"t"_s);
                }
            }
            CCatalogueRules::Entries selected = Entries(kind, low);
            selected.erase(selected.begin() + 1);
            QCOMPARE(rules.Move(selected, {-1, high, u"High"_s}), 3);
            QCOMPARE(Names(kind, low) + u' ' + Names(kind, high), u"B A,A,B,C,C,D,D"_s);
            QCOMPARE(rules.Move(Entries(kind, high), {-1, low, u"Low"_s}), 7);
            QCOMPARE(Names(kind, low) + u' ' + Names(kind, high), u"A,A,B,B,C,C,D,D "_s);
            QCOMPARE(Names(kind, middle), u"A,B,C,D"_s);
        }
    }

    void aCopyTakesTheFirstFreeSuffix() {
        CCatalogueRules rules(Database(), kFoods);
        const qint32 category = rules.AddCategory(u"Here"_s);
        const qint32 other = rules.AddCategory(u"Other"_s);
        AddItem(kFoods, category, u"Carrot"_s, u"Raw"_s);
        AddItem(kFoods, category, u"Carrot"_s, u"Raw_Copy01"_s);
        AddItem(kFoods, category, u"Beet"_s, u"Raw_Copy02"_s);
        AddItem(kFoods, other, u"Carrot"_s, u"Raw_Copy02"_s);
        const CCatalogueRules::Entries carrot = rules.ItemsOfName(category, u"Carrot"_s).entries;
        const int position = rules.Duplicate({carrot.front()});
        CFoodItem copy;
        QVERIFY(Database().Foods().Read(position, copy));
        QCOMPARE(copy.GetType(), u"Raw_Copy02"_s);
        QCOMPARE(copy.GetServingWeight(0), 240.0);
        for (int number = 3; number <= 99; ++number) {
            QVERIFY(rules.Duplicate({carrot.front()}) >= 0);
        }
        QCOMPARE(rules.ItemsOfName(category, u"Carrot"_s).entries.back().type, u"Raw_Copy99"_s);
        QCOMPARE(rules.Duplicate({carrot.front()}), -1);
        QCOMPARE(m_messages->Said(), u"Cannot create unique name to duplicate food."_s);
    }

    void theNameBeforeASuffixGivesWay() {
        // What is left of a name: with the suffix, 64 characters at most; types of foods 127, which
        // is what a file keeps.
        const QString x(127, u'x');
        const std::tuple<ECatalogueKind, QString, int> rows[] = {
            {kMenus, x.first(57), 57},
            {kRecipes, x.first(58), 57},
            {kRecipes, x.first(56) + u"\U0001F372y"_s, 56},  // not half a character
            {kFoods, x, 120},
        };
        for (const auto& [kind, name, left] : rows) {
            CCatalogueRules rules(Database(), kind);
            const qint32 category = rules.AddCategory(QString::number(name.size()));
            AddItem(kind, category, name, name);
            const CCatalogueRules::Entries original = Entries(kind, category);
            for (const QString& suffix : {u"_Copy01"_s, u"_Copy02"_s}) {
                CCatalogueItem copy(kind);
                QVERIFY(Database().Items(kind).Read(rules.Duplicate(original), copy));
                QCOMPARE(kind == kFoods ? copy.GetType() : copy.GetName(),
                         name.first(left) + suffix);
            }
        }
    }

    void renamingTouchesTheNameInItsCategoryAlone() {
        CCatalogueRules rules(Database(), kFoods);
        const qint32 category = rules.AddCategory(u"Here"_s);
        const qint32 other = rules.AddCategory(u"Other"_s);
        for (const char* type : {"raw", "boiled"}) {
            AddItem(kFoods, category, u"Carrot"_s, QString::fromLatin1(type));
            AddItem(kFoods, other, u"Carrot"_s, QString::fromLatin1(type));
        }
        AddItem(kFoods, category, u"carrot"_s, u"cake"_s);
        QCOMPARE(rules.RenameItems(category, u"Carrot"_s, u"Carrot "_s), u"Carrot"_s);
        QCOMPARE(rules.RenameItems(category, u"Carrot"_s, u" "_s), QString());
        QCOMPARE(m_messages->Said(), u"Please enter foods name."_s);
        QCOMPARE(rules.RenameItems(category, u"Carrot"_s, u" Daucus "_s), u"Daucus"_s);
        QCOMPARE(Names(kFoods, category), u"carrot,Daucus,Daucus"_s);
        QCOMPARE(Names(kFoods, other), u"Carrot,Carrot"_s);
    }

    /// More of them than a list shows.
    void aCategoryGoesWithAllItsItems() {
        for (const ECatalogueKind kind : {kFoods, kMenus}) {
            CCatalogueRules rules(Database(), kind);
            const qint32 first = rules.AddCategory(u"First"_s);
            const qint32 second = rules.AddCategory(u"Second"_s);
            {
                const CRecordGroup group(Database().GetStore());
                for (int i = 0; i < kCatalogueListCapacity + 10; ++i) {
                    AddItem(kind, first, QString::number(i), u"t"_s);
                }
                AddItem(kind, second, u"kept"_s, u"t"_s);
            }
            QVERIFY(rules.DeleteCategory(first));
            QCOMPARE(Names(kind, second), u"kept"_s);
            QCOMPARE(Database().Items(kind).Count(), kind == kMenus ? 2 : 1);
            QCOMPARE(Database().Categories().Find(kind, u"First"_s), -1);
        }
    }

    void init() { MakeVolume(); }
    void cleanup() { DropVolume(); }

  private:
    /// A menu or recipe gets one component.
    void AddItem(ECatalogueKind kind, qint32 category, const QString& name, const QString& type) {
        if (HasComponents(kind)) {
            const qint32 id = AddComposed(Database(), kind, category, name);
            QVERIFY(AddPart(Database(), kind, id, u"Milk"_s));
            return;
        }
        CFoodItem food = MakeFood(category, name, type);
        CExerciseItem exercise;
        exercise.SetCategoryId(category);
        exercise.SetName(name);
        exercise.SetType(type);
        QVERIFY(kind == kFoods ? Database().Foods().Write(-1, food)
                               : Database().Exlib().Write(-1, exercise));
    }
    CCatalogueRules::Entries Entries(ECatalogueKind kind, qint32 category) {
        return Database().Catalogue().FillCategoryList(kind, category).entries;
    }
    /// Every menu and recipe must have kept its component.
    QString Names(ECatalogueKind kind, qint32 category) {
        QStringList names;
        for (const CCategoryListEntry& entry : Entries(kind, category)) {
            CComposedItem item(HasComponents(kind) ? kind : kMenus);
            const bool isWhole =
                !HasComponents(kind) || (Database().Items(kind).Read(entry.position, item) &&
                                         PartsOf(Database(), kind, item.GetItemId()) == u"Milk");
            names.append(isWhole ? entry.name : u"broken"_s);
        }
        return names.join(u',');
    }
    QString TakeLast() {
        const QStringList shown = m_messages->TakeShown();
        return shown.isEmpty() ? QString() : shown.last();
    }
};

QTEST_GUILESS_MAIN(TestCatalogueCommands)
#include "TestCatalogueCommands.moc"

// Sharing and taking in over real files and real volumes.
#include <QDir>

#include "ShareFixture.h"
#include "app/UndoRules.h"
#include "catalogue/share/ShareWriter.h"
#include "support/DataRows.h"

using namespace Qt::StringLiterals;

class TestShare : public CShareTest {
    Q_OBJECT

  private slots:
    void init() { MakeVolume(); }
    void cleanup() { DropVolume(); }

    void aMenuComesOverWithAllItIsMadeOf() {
        FillKitchen();
        QCOMPARE(Share(kMenus), u"Shared 2 foods, 1 menu and 2 recipes."_s);
        QCOMPARE(m_messages->details,
                 QStringList{u"1 component comes without the food or recipe it was made of."_s});
        QCOMPARE(m_messages->lastIcon, EMessageIcon::Result);
        QVERIFY(Database().Foods().Delete(2));  // the soup
        const QString everything = Everything();
        QVERIFY(everything.contains(u"@Baking") && everything.contains(u"@Dairy"));
        // On to a second volume, and from there to a third.
        for (const QString& volume : {u"other.db"_s, u"third.db"_s}) {
            Reopen(volume);
            QCOMPARE(TakeIn(), u"Took in 2 foods, 1 menu and 2 recipes."_s);
            QCOMPARE(Everything(), everything);
            QCOMPARE(Share(kMenus), u"Shared 2 foods, 1 menu and 2 recipes."_s);
        }
        QVERIFY(RevertNext(Database(), EUndo::Undo, kCatalogueScope));
        QCOMPARE(Everything(), QString());
    }

    void whatIsThereIsTreatedAsTold_data() {
        AddRows<EDuplicatePolicy, QString, QString, int>({
            {"skip", EDuplicatePolicy::Skip,
             u"Took in 1 menu. Skipped 2 foods and 2 recipes that existed already."_s, u"Salt"_s,
             2},
            {"overwrite", EDuplicatePolicy::Overwrite,
             u"Took in 2 foods, 1 menu and 2 recipes. Replaced 2 foods and 2 recipes that existed "
             "already."_s,
             u"Dough,Milk"_s, 2},
            {"add", EDuplicatePolicy::DoNotCheck, u"Took in 2 foods, 1 menu and 2 recipes."_s,
             u"Salt"_s, 4},
        });
    }
    void whatIsThereIsTreatedAsTold() {
        const auto& [policy, said, parts, recipes] =
            DataRow<EDuplicatePolicy, QString, QString, int>();
        FillKitchen();
        (void)Share(kMenus);
        QVERIFY(Database().DeleteItem(kMenus, 0));
        QVERIFY(Database().Composed().DeleteComponents(kRecipes, m_bread));
        QVERIFY(AddPart(Database(), kRecipes, m_bread, u"Salt"_s));
        const ObjectId bread = Database().Recipes().RecordAt(0);
        QCOMPARE(TakeIn(policy), said);
        QCOMPARE(Database().Catalogue().CountItems(kRecipes), recipes);
        QCOMPARE(Database().Recipes().RecordAt(0), bread);
        QCOMPARE(PartsOf(Database(), kRecipes, m_bread), parts);
        // The menu is made of the bread that was there, or of the one that was added.
        CMenuItem part;
        QVERIFY(Database().Menus().Read(1, part));
        const int target = Database().Composed().FindRecipe(part.GetItemId());
        QCOMPARE(target, policy == EDuplicatePolicy::DoNotCheck ? 3 : 0);
    }

    /// Otherwise a recipe could come to contain itself: the second of two with one name in place of
    /// the first, which is part of it.
    void itemsOfOneNameStayApart() {
        const qint32 baking = AddCategory(Database(), u"Baking"_s, kRecipes);
        const qint32 inner = AddComposed(Database(), kRecipes, baking, u"Pie"_s);
        const qint32 outer = AddComposed(Database(), kRecipes, baking, u"Pie"_s);
        QVERIFY(AddPart(Database(), kRecipes, outer, u"Pie"_s, 0, EItemKind::Recipe, inner));
        (void)Share(kRecipes);
        Reopen(u"other.db"_s);
        QCOMPARE(AddCategory(Database(), u"Baking"_s, kRecipes), 1);
        const qint32 there = AddComposed(Database(), kRecipes, 1, u"Pie"_s);
        for (const QString& said :
             {u"Took in 2 recipes. Replaced 1 recipe that existed already."_s,
              u"Took in 2 recipes. Replaced 2 recipes that existed already."_s}) {
            QCOMPARE(TakeIn(EDuplicatePolicy::Overwrite), said);
            QCOMPARE(Database().Catalogue().CountItems(kRecipes), 2);
            QCOMPARE(PartsOf(Database(), kRecipes, there), QString());
            QCOMPARE(PartsOf(Database(), kRecipes, there + 1), u"Pie"_s);
            QVERIFY(!Database().Composed().RecipeContains(there, there + 1));
        }
        AddComposed(Database(), kRecipes, 1, u"Pie"_s);  // one more than the file has
        QCOMPARE(TakeIn(), u"Took in nothing. Skipped 2 recipes that existed already."_s);
    }

    void recipesMayContainEachOtherAsDeepAsTheyLike() {
        constexpr int kDepth = 2000;
        const qint32 category = AddCategory(Database(), u"Dolls"_s, kRecipes);
        qint32 inner = 0;
        CRecordGroup group(Database().GetStore());
        for (int i = 0; i < kDepth; ++i) {
            const qint32 doll = AddComposed(Database(), kRecipes, category, QString::number(i));
            QVERIFY(AddPart(Database(), kRecipes, doll, QString::number(i - 1), 0,
                            EItemKind::Recipe, inner));
            inner = doll;
        }
        QVERIFY(group.Commit());
        QCOMPARE(Share(kRecipes, {kDepth - 1}), u"Shared 2000 recipes."_s);
        Reopen(u"other.db"_s);
        QCOMPARE(TakeIn(), u"Took in 2000 recipes."_s);
        QVERIFY(
            Database().Composed().RecipeContains(kFirstComposedId + kDepth, kFirstComposedId + 1));
    }

    void aFileHoldsNothingElse() {
        FillKitchen();
        QVERIFY(Database().Foods().Write(-1, MakeFood(1, u"Secret"_s, u"x"_s)));
        QVERIFY(Database().Foods().Delete(Database().Foods().Count() - 1));
        (void)Share(kMenus);
        const QByteArray file = Load(Shared());
        for (const char16_t* absent : {u"Soup", u"Secret", u"NutrientNames"}) {
            const QString text = QString::fromUtf16(absent);
            QVERIFY(!file.contains(
                QByteArray(reinterpret_cast<const char*>(text.utf16()), text.size() * 2)));
        }
        QCOMPARE(QDir(m_folder->path()).entryList({u"kitchen*"_s}).size(), 1);
        // The same items make the same file.
        (void)Share(kMenus);
        QCOMPARE(Load(Shared()), file);
    }

    void damagedRecordsAreLeftOutAndCounted() {
        FillKitchen();
        Damage(Database().Foods(), 1);                               // the flour
        Damage(Database().Menus(), Database().Menus().Count() - 1);  // the egg
        QCOMPARE(Share(kMenus), u"! Shared 1 food, 1 menu and 2 recipes."_s);
        QCOMPARE(m_messages->details,
                 QStringList{u"1 damaged component is left out. 1 component comes without the food "
                             "or recipe it was made of."_s});
        QCOMPARE(Share(kFoods), u"! Shared 2 foods."_s);
        QCOMPARE(m_messages->details.last(), u"1 damaged item is left out."_s);
        // An item without its category comes in one of its own.
        QVERIFY(Database().Categories().Delete(Database().Categories().Find(kFoods, u"Dairy"_s)));
        QCOMPARE(Share(kFoods, {0, 0}), u"Shared 1 food."_s);
        Reopen(u"other.db"_s);
        QCOMPARE(TakeIn(), u"Took in 1 food."_s);
        QCOMPARE(Database().Categories().IdOf(kFoods, u"Undefined"_s), 1);
    }

    void anItemThatIsDamagedMeanwhileIsLeftOut() {
        FillKitchen();
        m_messages->progress.onPump = [this] {
            CItemDatabaseBase& menus = Database().Menus();
            QVERIFY(menus.Write(0, CExerciseItem()));
        };
        QCOMPARE(Share(kMenus, {0}), u"! Shared 2 foods and 2 recipes."_s);
        QCOMPARE(m_messages->details.last(), u"1 damaged item is left out."_s);
    }

    void limitsAreKept() {
        const qint32 category = AddCategory(Database(), u"Sports"_s, kExercises);
        CExerciseItem item;
        item.SetCategoryId(category);
        item.SetType(u"x"_s);
        {
            CRecordGroup group(Database().GetStore());
            for (int i = 0; i <= kMostSharedItems; ++i) {
                item.SetName(QString::number(i));
                QVERIFY(Database().Exlib().Write(-1, item));
            }
        }
        QCOMPARE(Share(kExercises),
                 u"! This is too much to share: a share file has at most 260 categories, 100000 "
                 "items, 1000000 components and 256 MB."_s);
        QVERIFY(!QFile::exists(Shared()));
        QVERIFY(Database().Exlib().Delete(0));
        QCOMPARE(Share(kExercises), u"Shared 100000 exercises."_s);
    }

    void nothingIsAddedToAFileThatIsTooLarge() {
        CShareWriter writer;
        const PropertyList picture = {QByteArray(kLargestPictureBytes, 'x')};
        while (!writer.HasFailed()) {
            writer.AddCategory(picture);
        }
        QByteArrayView bytes;
        QCOMPARE(int(writer.Finish(bytes)), int(kErrorInvalidParameter));
        QVERIFY(bytes.isEmpty());
    }

    void categoriesMustAllFitIn() {
        for (int i = 0; i < 2; ++i) {
            const qint32 category = AddCategory(Database(), u"New%1"_s.arg(i), kFoods);
            QVERIFY(Database().Foods().Write(-1, MakeFood(category, u"Tea"_s, u"x"_s)));
        }
        (void)Share(kFoods);
        Reopen(u"other.db"_s);
        for (int i = 0; i < kMaximumCategories - 1; ++i) {
            QVERIFY(AddCategory(Database(), QString::number(i), kMenus) > 0);
        }
        QCOMPARE(TakeIn(),
                 u"! Cannot add category. Maximum number of categories has been reached.|Cannot "
                 "take in the file '%1'. Nothing was changed."_s.arg(Shared()));
        QCOMPARE(m_messages->shownOverProgress, 0);
        QCOMPARE(Database().Catalogue().CountItems(kFoods), 0);
        QVERIFY(Database().Categories().Delete(0));
        QCOMPARE(TakeIn(), u"Took in 2 foods."_s);
        QCOMPARE(Database().Categories().Count(), kMaximumCategories);
    }

    void whatCannotBeUndoneIsAskedBefore() {
        FillKitchen();
        (void)Share(kMenus);
        QVERIFY(AddPart(Database(), kRecipes, m_bread, u"Salt"_s));
        const QString before = Everything();
        Database().GetStore().History().SetLimits({.steps = 100, .bytes = 500});
        m_messages->answers = {false};
        QCOMPARE(TakeIn(EDuplicatePolicy::Overwrite), u"! "_s);
        QCOMPARE(m_messages->asked, QStringList{u"This cannot be undone. Do you want to go on?"_s});
        QCOMPARE(Everything(), before);
        QVERIFY(TakeIn(EDuplicatePolicy::Overwrite).startsWith(u"Took in 2 foods"_s));
        QCOMPARE(PartsOf(Database(), kRecipes, m_bread), u"Dough,Milk"_s);
        QCOMPARE(m_messages->progress.shows, 4);
        QCOMPARE(m_messages->shownOverProgress, 0);
    }

    void nothingIsHalfDone() {
        FillKitchen();
        Save(Shared(), "old");
        {
            const CFileSizeLimit full(10'000);
            QCOMPARE(Share(kMenus), u"! Cannot create file."_s);
        }
        // Before the only menu has been read, among all that it is made of, and at its end.
        for (const int pumps : {1, 10, 18}) {
            m_messages->progress.pumps = 0;
            m_messages->progress.cancelAfterPumps = pumps;
            QCOMPARE(Share(kMenus), u"! Sharing cancelled. No file was written."_s);
        }
        m_messages->progress.cancelAfterPumps = -1;
        QCOMPARE(Load(Shared()), "old");
        QCOMPARE(Share(kMenus), u"Shared 2 foods, 1 menu and 2 recipes."_s);
        const QString before = Everything();
        const QString step = NextName(Database(), EUndo::Undo, kCatalogueScope);
        {
            const CFileSizeLimit full(1);
            QVERIFY(TakeIn(EDuplicatePolicy::DoNotCheck)
                        .endsWith(
                            u"Cannot take in the file '%1'. Nothing was changed."_s.arg(Shared())));
        }
        // While it is checked and while it is stored: 5 items and 6 components each.
        for (const int pumps : {1, 2, 12, 13, 23}) {
            m_messages->progress.pumps = 0;
            m_messages->progress.cancelAfterPumps = pumps;
            QCOMPARE(TakeIn(EDuplicatePolicy::DoNotCheck),
                     u"! Taking in cancelled. Nothing was changed."_s);
        }
        QCOMPARE(Everything(), before);
        QCOMPARE(NextName(Database(), EUndo::Undo, kCatalogueScope), step);
    }

    void theProposedNameIsAFileName() {
        const qint32 category = AddCategory(Database(), u"Dry"_s);
        const QString word(59, u'ж');
        for (const QString& name :
             {u"../Oats: \"fine\" 1/2"_s, u"Süß"_s, u"..."_s, QString(word + u" %1"_s.arg(word))}) {
            QVERIFY(Database().Foods().Write(-1, MakeFood(category, name, u"x"_s)));
        }
        QString proposed;
        for (const std::vector<int>& positions : {{0}, {1}, {2}, std::vector{0, 1}, {3}}) {
            proposed += ProposedShareName(Database(), {kFoods, positions}) + u'|';
        }
        QCOMPARE(proposed,
                 u"Oats fine 1 2.velmora|Süß.velmora|foods.velmora|foods.velmora|%1.velmora|"_s.arg(
                     word));
    }
};

QTEST_GUILESS_MAIN(TestShare)
#include "TestShare.moc"

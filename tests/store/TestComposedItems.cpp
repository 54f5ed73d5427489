// Menus and recipes with their components in the store.
#include "support/ComposedSamples.h"
#include "support/Files.h"

using namespace Qt::StringLiterals;

class TestComposedItems : public CCatalogueTest {
    Q_OBJECT

  private slots:
    void identifiersStayApartFromCategoriesAndFromEachOther() {
        const qint32 lunch = Menu(u"Lunch"_s, {});
        QVERIFY(lunch > CViewSettings::kMarker);
        Reopen();
        QVERIFY(Menu(u"Dinner"_s, {}) > lunch);
        // A recipe that is gone may still be named by what was made of it.
        const qint32 pie = AddComposed(Database(), kRecipes, 1, u"Pie"_s);
        const qint32 dough = AddComposed(Database(), kRecipes, 1, u"Dough"_s);
        QVERIFY(AddPart(Database(), kRecipes, pie, u"Dough"_s, 0, EItemKind::Recipe, dough));
        QVERIFY(Database().DeleteItem(kRecipes, 1));
        Reopen();
        const qint32 tart = AddComposed(Database(), kRecipes, 1, u"Tart"_s);
        QVERIFY(tart > dough);
        QVERIFY(AddPart(Database(), kMenus, lunch, u"Tart"_s, 0, EItemKind::Recipe, tart));
        QVERIFY(Database().DeleteItem(kRecipes, 1));
        Reopen();
        QCOMPARE(AddComposed(Database(), kRecipes, 1, u"Cake"_s), tart + 1);
    }

    void componentsLeftBehindByACrashGoWhenTheCatalogueOpens() {
        const qint32 lunch = Menu(u"Lunch"_s, {u"Soup"_s});
        const qint32 unfinished = Database().Composed().AllocateItemId(kMenus);
        for (const qint32 owner : {unfinished, unfinished, unfinished + 7, unfinished + 7}) {
            QVERIFY(AddPart(Database(), kMenus, owner, u"Milk"_s));
        }
        QCOMPARE(Database().Menus().Count(), 6);
        {
            // No room to clean up in is no reason not to start, nor to say anything.
            const CFileSizeLimit full(1);
            Reopen();
            QCOMPARE(Database().Menus().Count(), 6);
        }
        Reopen();
        QCOMPARE(Database().Menus().Count(), 2);
        QCOMPARE(PartsOf(Database(), kMenus, lunch), u"Soup"_s);
        // Components of a damaged menu may be wanted again.
        QVERIFY(AddPart(Database(), kMenus, unfinished, u"Milk"_s));
        Damage(Database().Menus(), 0);
        QCOMPARE(Database().Menus().Count(), 3);
    }

    void componentsWithoutTheirPositionsAreUnknown() {
        const qint32 lunch = Menu(u"Lunch"_s, {u"Soup"_s});
        CLeftOut leftOut;
        QCOMPARE(Database().Composed().ComponentPositions(kMenus, lunch, &leftOut).size(), 1U);
        QVERIFY(!leftOut.isUnknown);
        Change(
            "UPDATE blocks SET entries=x'00' WHERE database="
            "(SELECT id FROM databases WHERE name='Menus')");
        QVERIFY(Database().Composed().ComponentPositions(kMenus, lunch, &leftOut).empty());
        QVERIFY(leftOut.isUnknown);
        QVERIFY(!Database().Composed().DeleteComponents(kMenus, lunch));
    }

    void nothingIsCopiedUnlessAllCanBeRead() {
        Menu(u"Lunch"_s, {u"Soup"_s, u"Milk"_s});
        QVERIFY(Database().Composed().AddCopy(kMenus, 0, u"Dinner"_s));
        for (const int damaged : {5, 1}) {
            Change("UPDATE records SET body=substr(body, 1, length(body) - 1) WHERE id=?",
                   {Database().Menus().RecordAt(damaged)});
            QVERIFY(!Database().Composed().AddCopy(kMenus, 1, u"Tea"_s));
            QCOMPARE(Database().Menus().Count(), 6);
        }
    }

    void recipesThatHoldEachOtherAreSeenThrough() {
        const auto recipe = [this](const QString& name) {
            return AddComposed(Database(), kRecipes, 1, name);
        };
        const auto put = [this](qint32 part, qint32 whole) {
            QVERIFY(AddPart(Database(), kRecipes, whole, u"part"_s, 0, EItemKind::Recipe, part));
        };
        const qint32 dough = recipe(u"Dough"_s);
        const qint32 crust = recipe(u"Crust"_s);
        const qint32 pie = recipe(u"Pie"_s);
        put(dough, crust);
        put(crust, pie);
        QVERIFY(Database().Composed().RecipeContains(pie, dough));
        QVERIFY(!Database().Composed().RecipeContains(dough, pie));
        // Only a foreign program writes this; it must not go round for ever.
        put(pie, dough);
        QVERIFY(!Database().Composed().RecipeContains(dough, pie + 1));
    }

    void init() { MakeVolume(); }
    void cleanup() { DropVolume(); }

  private:
    qint32 Menu(const QString& name, const QStringList& parts) {
        const qint32 id = AddComposed(Database(), kMenus, 1, name);
        for (const QString& part : parts) {
            AddPart(Database(), kMenus, id, part);
        }
        return id;
    }
};

QTEST_GUILESS_MAIN(TestComposedItems)
#include "TestComposedItems.moc"

// Putting menus and recipes together: components, values, refusals, and the recipe as text.
#include "catalogue/exchange/RecipeText.h"
#include "catalogue/pick/AddFoodForm.h"
#include "diary/DiaryFixture.h"
#include "support/ComposedSamples.h"

class TestComposedForm : public CDiaryTest {
    Q_OBJECT

  private slots:
    void aRecipeIsTheSumOfItsFoods() {
        CComposedForm form(*m_doc, kRecipes, -1, m_category);
        // 2 x 150 g of 52 kcal per 100 g = 156; 1 bowl = 80; 3 rings of 6 g of 240 = 43.2.
        form.SetRowText(0, u"12"_s);
        form.Recalculate();  // of nothing
        QCOMPARE(form.RowText(0), u"0.00"_s);
        AddFoods(form);
        form.Recalculate();
        QCOMPARE(form.RowText(0), u"279.20"_s);
        QCOMPARE(form.RowText(1), u"27.92"_s);
        QCOMPARE(form.ServingText(0), u"2.00x1 medium"_s);
        form.Fields().name = u" Soup with apples "_s;
        form.Fields().servings = u" 4 portions "_s;
        form.Fields().instructions = u"Stir.\r\nServe."_s;
        QVERIFY(form.Confirm());
        CRecipeItem recipe;
        QVERIFY(Database().Recipes().Read(form.GetStoredPosition(), recipe));
        QCOMPARE(recipe.GetName(), u"Soup with apples"_s);
        QCOMPARE(recipe.GetServingName(), u"4 portions"_s);
        QCOMPARE(recipe.GetInstructions(), u"Stir.\r\nServe."_s);
        // 156 + 80 + 43.2; the sugar is not displayed and is summed all the same.
        QVERIFY(std::abs(recipe.GetNutrientValue(kEnergyIndex) - 279.2) < 1e-9);
        QCOMPARE(recipe.GetNutrientValue(6), 9.0);  // 2 x 1.5 x 3 g
        QCOMPARE(PartsOf(Database(), kRecipes, recipe.GetItemId()), u"Apple,Tomato soup,Apple"_s);
    }

    void aCellCountsWithItsLeadingNumber() {
        const qint32 category = AddCategory(Database(), u"M"_s, kMenus);
        AddComposed(Database(), kMenus, category, u"Lunch"_s);
        CMenuItem menu;
        QVERIFY(Database().Menus().Read(0, menu));
        menu.SetNutrientValue(1, 3.33333);
        QVERIFY(Database().Menus().Write(0, menu));
        const std::pair<QString, double> rows[] = {
            {u"3.33"_s, 3.33333},  // as shown: left alone
            {u"12 g"_s, 12},      {u"abc"_s, 0}, {u"1e9"_s, 1e9}, {u"1000000001"_s, 3.33333},
        };
        for (const auto& [typed, stored] : rows) {
            CComposedForm form(*m_doc, kMenus, 0, category);
            form.SetRowText(1, typed);
            QVERIFY(form.Confirm());
            CMenuItem confirmed;
            QVERIFY(Database().Menus().Read(0, confirmed));
            QCOMPARE(confirmed.GetNutrientValue(1), stored);
            QVERIFY(Database().Menus().Write(0, menu));
        }
    }

    void aRecipeMayNotHoldItself() {
        const qint32 dough = AddComposed(Database(), kRecipes, m_category, u"Dough"_s);
        const qint32 pie = AddComposed(Database(), kRecipes, m_category, u"Pie"_s);
        QVERIFY(AddPart(Database(), kRecipes, pie, u"Dough"_s, 0, EItemKind::Recipe, dough));
        CComposedForm form(*m_doc, kRecipes, 0, m_category);
        QVERIFY(!AddPicked(form, EItemKind::Recipe, {u"Recipes"_s, u"Dough"_s}, u"1"_s));
        QVERIFY(!AddPicked(form, EItemKind::Recipe, {u"Recipes"_s, u"Pie"_s}, u"1"_s));
        QCOMPARE(m_messages->Said(),
                 u"Recipe 'Dough' cannot be a part of itself.|"
                 "Recipe 'Pie' cannot be a part of itself."_s);
        QVERIFY(form.Components().empty());
        CComposedForm menu(*m_doc, kMenus, -1, 1);
        QVERIFY(AddPicked(menu, EItemKind::Recipe, {u"Recipes"_s, u"Pie"_s}, u"1"_s));
        QCOMPARE(menu.Components()[0].GetItemId(), pie);
    }

    void theTextIsWhatTheDialogShows() {
        CComposedForm form(*m_doc, kRecipes, -1, m_category);
        AddFoods(form);
        QVERIFY(AddPicked(form, EItemKind::Food, {u"Soups"_s, u"Tomato soup"_s, u"home made"_s},
                          u"1"_s));
        form.Fields() = {m_category, u" Soup "_s, u"4 portions"_s, u"Stir.\r\nServe."_s};
        form.Recalculate();
        form.SetRowText(1, u"7.5"_s);
        QVERIFY(!SaveRecipeText(form));  // the file dialog was cancelled
        QCOMPARE(m_messages->choices.last().defaultExtension, u".txt"_s);
        m_messages->chosenFile = Path(u"soup.txt"_s);
        QVERIFY(SaveRecipeText(form));
        // Typed values and blanks as they stand, in every locale; 279.2 + 80 kcal.
        const QByteArray inC = Load(m_messages->chosenFile);
        QVERIFY(inC.contains("\r\nName:  Soup \r\n") &&
                inC.contains("\r\n1 bowl Tomato soup\r\n3.00 X"));
        QVERIFY(inC.endsWith("\r\nNutrients:\r\nEnergy (kcal): 359.20\r\nProtein (g): 7.50\r\n"));
        QLocale::setDefault(QLocale(u"de_DE"_s));  // "2,00" on the screen
        QVERIFY(SaveRecipeText(form));
        QCOMPARE(Load(m_messages->chosenFile), inC);
    }

    void init() {
        MakeDiary();
        AddCatalogue();
        CFoodItem apple;
        QVERIFY(Database().Foods().Read(0, apple));
        apple.SetNutrientValue(6, 3);
        QVERIFY(Database().Foods().Write(0, apple));
        m_category = AddCategory(Database(), u"Recipes"_s, kRecipes);
    }
    void cleanup() { DropVolume(); }

  private:
    /// Two medium apples, a bowl of soup, three rings of dried apple.
    void AddFoods(CComposedForm& form) {
        QVERIFY(AddPicked(form, EItemKind::Food, {u"Fruit"_s, u"Apple"_s, u"raw"_s}, u"2"_s));
        QVERIFY(AddPicked(form, EItemKind::Food, {u"Soups"_s, u"Tomato soup"_s, u"home made"_s},
                          u"1"_s));
        QVERIFY(AddPicked(form, EItemKind::Food, {u"Fruit"_s, u"Apple"_s, u"dried"_s}, u"3"_s));
    }
    /// `picks` are category, name and, for a food, type.
    bool AddPicked(CComposedForm& form, EItemKind kind, const QStringList& picks,
                   const QString& amount) {
        CAddFoodForm chosen(*m_doc, CAddFoodRequest::ForNewComponent());
        chosen.SetKind(kind);
        EPicker picker = EPicker::Category;
        for (const QString& row : picks) {
            picker = chosen.Pick(picker, row);
        }
        chosen.SetAmountText(amount);
        return chosen.Confirm() && form.AddComponent(chosen.GetResult());
    }

    qint32 m_category = -1;
};

QTEST_GUILESS_MAIN(TestComposedForm)
#include "TestComposedForm.moc"

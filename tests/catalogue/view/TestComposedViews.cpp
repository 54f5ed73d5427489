// The dialog that picks a food, the menus and the recipes window with theirs, by mouse and
// keyboard.
#include <QAction>
#include <QComboBox>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTimeEdit>

#include "catalogue/items/ComposedEditDialog.h"
#include "catalogue/pick/AddFoodDialog.h"
#include "catalogue/pick/FindDialog.h"
#include "catalogue/view/ComposedMainView.h"
#include "controls/ReportList.h"
#include "diary/DiaryFixture.h"
#include "support/Clicks.h"
#include "support/ComposedSamples.h"
#include "support/Files.h"

class TestComposedViews : public CDiaryTest {
    Q_OBJECT

  private slots:
    void keysAloneBringAFoodToTheEntry() {
        CAddFoodForm form(*m_doc, CAddFoodRequest::ForNewEntry(QTime(12, 30, 15)));
        CAddFoodDialog dialog(form, nullptr);
        Show(dialog);
        auto* category = Find<QComboBox>(dialog, "category");
        QVERIFY(category->hasFocus());
        auto* values = Find<CGrid>(dialog, "values");
        QVERIFY(TypeInto(values, 1, 1, u"3.5"_s));
        Press(dialog, "ok");  // refused for want of a name
        QCOMPARE(form.RowText(1), u"3.5"_s);
        QTest::keyClick(category, Qt::Key_Down);
        for (const auto key : {Qt::Key_Return, Qt::Key_Return, Qt::Key_R, Qt::Key_Return}) {
            QTest::keyClick(Find<CReportList>(dialog, "pickListRows"), key);
        }
        auto* serving = Find<QComboBox>(dialog, "serving");
        QCOMPARE(QApplication::focusWidget(), serving);
        QTest::keyClick(serving, Qt::Key_Down);
        QCOMPARE(values->CellText(0, 1), u"65.00"_s);  // 52 * 1.25
        auto* amount = Find<QLineEdit>(dialog, "amount");
        Replace(amount, u"0"_s);
        serving->setFocus();
        QCOMPARE(amount->text(), u"1.00"_s);  // what counts for nothing is one
        QTest::keyClick(serving, Qt::Key_Tab);
        QTest::keyClicks(QApplication::focusWidget(), u"2"_s);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        const CFoodItem& food = form.GetResult().item;
        QCOMPARE(food.GetType() + u'/' + food.GetServingName(0), u"raw/1 cup"_s);
        QCOMPARE(food.GetNutrientValue(kEnergyIndex), 130.0);
        QCOMPARE(form.GetResult().time, QTime(12, 30, 15));
        QCOMPARE(m_messages->Said(), u"Please enter food name"_s);
    }

    void aRecipeIsMadeInItsWindow() {
        CRecipesMainView view(*m_doc, nullptr);
        Show(view);
        Find<QAction>(view, "New recipe")->trigger();
        QCOMPARE(m_messages->Said(), u"Please create category before adding new recipe."_s);
        AddCategory(Database(), u"Desserts"_s, kRecipes);
        view.DataChanged();
        OnDialog<CComposedEditDialog>([this](CComposedEditDialog& dialog) {
            Replace(Find<QLineEdit>(dialog, "name"), u"Compote"_s);
            Replace(Find<QLineEdit>(dialog, "servings"), u"2 bowls"_s);
            Page(dialog, 1);
            OnDialog<CAddFoodDialog>([](CAddFoodDialog& add) {
                QVERIFY(!Find<QTimeEdit>(add, "time")->isVisible());
                QTest::keyClick(Find<QComboBox>(add, "category"), Qt::Key_Down);
                for (const auto key : {Qt::Key_Return, Qt::Key_Return, Qt::Key_R, Qt::Key_Return}) {
                    QTest::keyClick(Find<CReportList>(add, "pickListRows"), key);
                }
                add.accept();
            });
            Press(dialog, "addFood");
            Press(dialog, "recalculate");
            Page(dialog, 2);
            auto* instructions = Find<QPlainTextEdit>(dialog, "instructions");
            QTest::keyClicks(instructions, u"Boil"_s);
            QTest::keyClick(instructions, Qt::Key_Return);
            QTest::keyClicks(instructions, u"Cool"_s);
            m_messages->chosenFile = Path(u"recipe.txt"_s);
            Press(dialog, "saveAsText");
            QVERIFY(Load(m_messages->chosenFile).endsWith("Protein (g): 7.80\r\n"));
            // The second cell is still open: the first OK ends it alone.
            Page(dialog, 0);
            dialog.activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(&dialog));
            QVERIFY(TypeInto(Find<CGrid>(dialog, "nutrients"), 1, 1, u"9"_s));
            dialog.accept();
            QVERIFY(dialog.isVisible());
            dialog.accept();
        });
        Find<QAction>(view, "New recipe")->trigger();
        CRecipeItem recipe;
        QVERIFY(Database().Recipes().Read(0, recipe));
        QCOMPARE(recipe.GetName(), u"Compote"_s);
        QCOMPARE(recipe.GetNutrientValue(kEnergyIndex), 78.0);  // 150 g of 52 kcal per 100 g
        QCOMPARE(recipe.GetNutrientValue(1), 9.0);
        QCOMPARE(recipe.GetInstructions(), u"Boil\r\nCool"_s);
        QCOMPARE(PartsOf(Database(), kRecipes, recipe.GetItemId()), u"Apple"_s);
        QCOMPARE(Find<CReportList>(view, "items")->SelectedRows(), std::vector<int>{0});
    }

    void theNextRunFindsByTheSameTexts() {
        const auto find = [this](const QString& expected, const QString& typed) {
            CRecipesMainView view(*m_doc, nullptr);
            Show(view);
            OnDialog<CFindDialog>([&](CFindDialog& dialog) {
                QCOMPARE(dialog.GetName(), expected);
                Replace(Find<QLineEdit>(dialog, "name"), typed);
                Press(dialog, "ok");
            });
            Find<QAction>(view, "Find recipe")->trigger();
            QCOMPARE(m_messages->Said(), u"Recipe not found."_s);
        };
        find({}, u"pie"_s);
        Reopen();
        QVERIFY(m_doc->SetActiveProfile(u"Ann"_s));
        find(u"pie"_s, u"tart"_s);
        // A food is found by the dialogs that pick one, too.
        CAddFoodForm form(*m_doc, CAddFoodRequest::ForNewEntry(QTime(8, 0)));
        QVERIFY(form.Find(u"apple"_s, {u"dried"_s}));
        Reopen();
        QVERIFY(m_doc->SetActiveProfile(u"Ann"_s));
        QCOMPARE(m_doc->FindState(kFoods).name, u"apple"_s);
        QCOMPARE(m_doc->FindState(kFoods).types, QStringList{u"dried"_s});
        QCOMPARE(m_doc->FindState(kRecipes).name, u"tart"_s);
    }

    void returnEditsAMenuAndItsTextsStayWhenNobodyTouchesThem() {
        const qint32 category = AddCategory(Database(), u"Week"_s, kMenus);
        const qint32 lunch = AddComposed(Database(), kMenus, category, u"Lunch"_s);
        QVERIFY(AddPart(Database(), kMenus, lunch, u"Soup"_s, 1.0 / 3));
        CMenuItem before;
        QVERIFY(Database().Menus().Read(0, before));
        before.SetNutrientValue(kEnergyIndex, 1.0 / 3);
        QVERIFY(Database().Menus().Write(0, before));
        CMenusMainView view(*m_doc, nullptr);
        Show(view);
        auto* list = Find<CReportList>(view, "items");
        list->SelectRow(0);
        list->setFocus();
        OnDialog<CComposedEditDialog>([](CComposedEditDialog& dialog) {
            QCOMPARE(dialog.windowTitle(), u"Menu"_s);
            Page(dialog, 1);
            auto* parts = Find<CReportList>(dialog, "components");
            QCOMPARE(parts->model()->index(0, 1).data().toString(), u"1.00xcup"_s);
            Press(dialog, "editFood");
            dialog.accept();
        });
        QTest::keyClick(list, Qt::Key_Return);
        QCOMPARE(m_messages->Said(), u"Please select food to edit."_s);
        CMenuItem after;
        QVERIFY(Database().Menus().Read(0, after));
        QVERIFY(after == before);
        view.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&view));
        QTest::keyClick(list, Qt::Key_Delete);
        QCOMPARE(m_messages->asked.last(), u"Are you sure you want to delete menu 'Lunch'?"_s);
        QCOMPARE(Database().Menus().Count(), 0);
    }

    void init() {
        MakeDiary();
        AddCatalogue();
    }
    void cleanup() { DropVolume(); }

  private:
    static void Page(CComposedEditDialog& dialog, int page) {
        Find<QTabWidget>(dialog, "pages")->setCurrentIndex(page);
    }
};

QTEST_MAIN(TestComposedViews)
#include "TestComposedViews.moc"

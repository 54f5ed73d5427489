// The dialogs of the foods window under real clicks and keys.
#include <QComboBox>
#include <QRadioButton>
#include <QTabWidget>

#include "catalogue/items/FoodEditDialog.h"
#include "catalogue/pick/FindDialog.h"
#include "catalogue/view/FoodsPreferencesDialog.h"
#include "catalogue/view/OptionsDialogs.h"
#include "support/CatalogueTest.h"
#include "support/Clicks.h"

using namespace Qt::StringLiterals;

namespace {
/// On the button itself: the widget is wider than what takes a click.
void PressRadio(QWidget& dialog, const char* name) {
    auto* button = Find<QRadioButton>(dialog, name);
    QTest::mouseClick(button, Qt::LeftButton, {}, {8, button->height() / 2});
}

bool Type(CGrid* grid, int row, int column, const QString& text) {
    const bool isTyped = TypeInto(grid, row, column, text);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    return isTyped && !grid->IsEditing();
}

QStringList NamesIn(const CGrid* grid) {
    QStringList names;
    for (int row = 0; row < grid->RowCount(); ++row) {
        names.append(grid->CellText(row, 0));
    }
    return names;
}
}  // namespace

class TestFoodsDialogs : public CCatalogueTest {
    Q_OBJECT

  private slots:
    void switchingTheModeAsksWhenServingsWouldGo() {
        const QString question =
            u"Only one serving enabled in this mode. You have to know nutrient values for this "
            "serving. All current servings will be deleted. Continue?"_s;
        const std::tuple<bool, bool, bool> rows[] = {
            {true, false, false}, {true, true, true}, {false, false, true}};
        for (const auto& [confirms, answer, switched] : rows) {
            CCatalogueViewSettings settings;
            settings.confirmServingChange = confirms;
            QVERIFY(settings.Save(Database(), kFoods));
            m_messages->answer = answer;
            CFoodEditDialog dialog(*m_doc, m_milk, 0, nullptr);
            Show(dialog);
            auto* grid = Find<CGrid>(dialog, "servings");
            QCOMPARE(grid->RowCount(), 10);
            PressRadio(dialog, "oneServing");
            QCOMPARE(std::exchange(m_messages->asked, {}).join(u'|'),
                     confirms ? question : QString());
            QCOMPARE(Find<QRadioButton>(dialog, "oneServing")->isChecked(), switched);
            QCOMPARE(Find<QRadioButton>(dialog, "weighedServings")->isChecked(), !switched);
            QCOMPARE(NamesIn(grid).join(u'|'), switched ? QString() : u"1 cup|||||||||"_s);
            QCOMPARE(grid->RowCount(), switched ? 1 : 10);
        }
    }

    void aNewFoodSwitchesWithoutAQuestionUntilItHasServings() {
        CFoodEditDialog dialog(*m_doc, m_new, -1, nullptr);
        Show(dialog);
        auto* grid = Find<CGrid>(dialog, "servings");
        QCOMPARE(NamesIn(grid), QStringList{u"1 serving"_s});
        PressRadio(dialog, "weighedServings");
        QVERIFY(m_messages->asked.isEmpty());
        QCOMPARE(NamesIn(grid), QStringList(10, QString()));
        QVERIFY(Type(grid, 2, 1, u"15"_s));
        m_messages->answer = false;
        PressRadio(dialog, "oneServing");
        QCOMPARE(std::exchange(m_messages->asked, {}).size(), 1);
        QCOMPARE(grid->CellText(2, 1), u"15"_s);
        QVERIFY(grid->OpenCell(0, 0));
        const auto* words = grid->findChild<QComboBox*>();
        QStringList offered;
        for (int i = 0; i < words->count(); ++i) {
            offered << words->itemText(i);
        }
        QCOMPARE(offered.join(u'|'),
                 u"gm|mg|oz|ml|tsp|tbsp|fl oz|cup|pt|qt|of(ea)|piece|serving"_s);
    }

    void aNewFoodIsTakenAsItWasTyped() {
        CFoodEditDialog dialog(*m_doc, m_new, -1, nullptr);
        Show(dialog);
        auto* grid = Find<CGrid>(dialog, "servings");
        PressRadio(dialog, "weighedServings");
        Find<QComboBox>(dialog, "category")->setCurrentIndex(-1);
        QTest::keyClicks(Find<QLineEdit>(dialog, "name"), u" Milk "_s);
        QTest::keyClicks(Find<QLineEdit>(dialog, "type"), u"skimmed"_s);
        QVERIFY(Type(grid, 3, 0, u"glass"_s));
        QVERIFY(Type(grid, 3, 1, u"200.5"_s));
        Press(dialog, "ok");
        QCOMPARE(m_messages->Said(), u"There is no category selected."_s);
        QVERIFY(dialog.isVisible());
        Find<QComboBox>(dialog, "category")->setCurrentIndex(0);
        QVERIFY(Type(Find<CGrid>(dialog, "nutrients"), 1, 1, u"3.4567"_s));
        Press(dialog, "ok");
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QCOMPARE(dialog.GetItem().GetName() + u'/' + dialog.GetItem().GetType(), u"Milk/skimmed"_s);
        // The serving of row 4 closes up to serving 1, which decides the mode.
        QCOMPARE(dialog.GetItem().GetServingName(0), u"glass"_s);
        QCOMPARE(dialog.GetItem().GetServingWeight(0), 200.5);
        QCOMPARE(dialog.GetItem().GetNutrientValue(1), 3.4567);
    }

    void aServingsNameIsNoLongerThanAFileKeeps() {
        m_milk.SetServingName(1, QString(64, u'o'));
        m_doc->Settings().preferences.displayed = 1U << 10U;
        CFoodEditDialog dialog(*m_doc, m_milk, 0, nullptr);
        Show(dialog);
        QCOMPARE(NamesIn(Find<CGrid>(dialog, "nutrients")).first(2).join(u'|'),
                 u"Iron (mg)|Energy "_s);  // what is in use, then the others
        auto* grid = Find<CGrid>(dialog, "servings");
        QVERIFY(Type(grid, 0, 0, QString(64, u'x')));
        QCOMPARE(grid->CellText(0, 0), QString(63, u'x'));
        // A longer one that is there stays whole until it is changed.
        QVERIFY(grid->OpenCell(1, 0));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(grid->CellText(1, 0), QString(64, u'o'));
    }

    void energyIsTypedInKJAndOtherCellsKeepTheirDigits() {
        m_doc->Settings().preferences.energyUnit = EEnergyUnit::KJ;
        CFoodEditDialog dialog(*m_doc, m_milk, 0, nullptr);
        Show(dialog);
        auto* grid = Find<CGrid>(dialog, "nutrients");
        QCOMPARE(grid->CellText(0, 1), u"418.00"_s);  // 100 kcal x 4.18
        QCOMPARE(grid->CellText(1, 1), u"3.33"_s);
        QVERIFY(Type(grid, 0, 1, u"836"_s));
        QVERIFY(Type(grid, 1, 1, u"3.33"_s));
        QVERIFY(Type(grid, 2, 1, u"nothing"_s));
        QVERIFY(Type(grid, 3, 1, u"-5"_s));
        QVERIFY(Type(grid, 4, 1, QString()));
        Press(dialog, "ok");
        const CFoodItem& food = dialog.GetItem();
        const double expected[] = {836 * 0.23923444976076558, 3.3333333, 2.5, 0, 0};
        for (int i = 0; i < 5; ++i) {
            QCOMPARE(food.GetNutrientValue(i), expected[i]);
        }
        QCOMPARE(food.GetServingWeight(0), 240.123456);
    }

    void preferencesAreKeptAndOnlyUserDefinedNutrientsRenamed() {
        CFoodsPreferencesDialog dialog(*m_doc, nullptr);
        Show(dialog);
        auto* grid = Find<CGrid>(dialog, "nutrients");
        QVERIFY(Type(grid, 10, 0, u"Rust"_s));
        QVERIFY(Type(grid, 40, 0, u"Caffeine (mg)"_s));
        QVERIFY(Type(grid, 41, 0, u" "_s));
        grid->SetChecked(0, false);
        grid->SetChecked(40, true);
        Find<QTabWidget>(dialog, "tabs")->setCurrentIndex(1);
        Find<QAbstractButton>(dialog, "confirmServingChange")->click();
        Press(dialog, "ok");
        const QStringList& names = m_doc->NutrientNames();
        QCOMPARE(names[10], u"Iron (mg)"_s);
        QCOMPARE(names[40], u"Caffeine (mg)"_s);
        QCOMPARE(names[41], u"User defined 8"_s);
        QVERIFY(!m_doc->Preferences().displayed.test(0));
        QVERIFY(m_doc->Preferences().displayed.test(40));
        const CCatalogueViewSettings settings = CCatalogueViewSettings::Load(Database(), kFoods);
        QVERIFY(!settings.confirmServingChange);
        QVERIFY(settings.namesInTree);
        QCOMPARE(settings.splitterPerMille, 400);
    }

    void findWantsSomethingToFind() {
        CFindDialog dialog(u"Please enter food name and/or type:"_s, {},
                           CFindDialog::EFields::NameAndType, nullptr);
        Show(dialog);
        Press(dialog, "ok");
        QCOMPARE(m_messages->Said(), u"Please enter at least one item for find."_s);
        QTest::keyClicks(Find<QLineEdit>(dialog, "type"), u"raw"_s);
        Press(dialog, "ok");
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QCOMPARE(dialog.GetTypes(), QStringList{u"raw"_s});
    }

    void init() {
        MakeVolume();
        m_new = CFoodItem();
        m_new.SetCategoryId(AddCategory(Database(), u"Dairy"_s));
        m_milk = MakeFood(m_new.GetCategoryId(), u"Milk"_s, u"whole"_s);
        m_milk.SetServingWeight(0, 240.123456);
        m_milk.SetNutrientValue(0, 100);
        m_milk.SetNutrientValue(1, 3.3333333);
        m_milk.SetNutrientValue(2, 2.5);
        m_milk.SetNutrientValue(4, 1.25);
        QVERIFY(Database().Foods().Write(-1, m_milk));
    }
    void cleanup() {
        QCOMPARE(m_messages->asked, QStringList());
        DropVolume();
    }

  private:
    CFoodItem m_milk;
    CFoodItem m_new;  ///< with its category only
};

QTEST_MAIN(TestFoodsDialogs)
#include "TestFoodsDialogs.moc"

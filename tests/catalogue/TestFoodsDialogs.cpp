// The dialogs of the foods window under real clicks and keys.
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>

#include "catalogue/FindDialog.h"
#include "catalogue/FoodEditDialog.h"
#include "catalogue/FoodSamples.h"
#include "catalogue/FoodsPreferencesDialog.h"
#include "catalogue/OptionsDialogs.h"
#include "controls/Grid.h"
#include "support/RecordingMessages.h"

using namespace Qt::StringLiterals;

namespace {
template <typename Widget>
Widget* Find(QWidget& dialog, const char* name) {
    return dialog.findChild<Widget*>(QString::fromLatin1(name));
}

void PressOk(QWidget& dialog) {
    QTest::mouseClick(Find<QPushButton>(dialog, "ok"), Qt::LeftButton);
}

/// On the button itself: the widget is wider than what takes a click.
void PressRadio(QWidget& dialog, const char* name) {
    auto* button = Find<QRadioButton>(dialog, name);
    QTest::mouseClick(button, Qt::LeftButton, {}, {8, button->height() / 2});
}

/// Types into a cell as a user does: opens it, replaces the text, ends with Return.
bool Type(CGrid* grid, int row, int column, const QString& text) {
    if (!grid->OpenCell(row, column)) {
        return false;
    }
    QWidget* editor = QApplication::focusWidget();
    QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(editor, Qt::Key_Delete);
    QTest::keyClicks(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
    return !grid->IsEditing();
}

QStringList NamesIn(const CGrid* grid) {
    QStringList names;
    for (int row = 0; row < grid->RowCount(); ++row) {
        names.append(grid->CellText(row, 0));
    }
    return names;
}
}  // namespace

class TestFoodsDialogs : public QObject {
    Q_OBJECT

  private slots:
    void switchingTheModeAsksWhenServingsWouldGo_data() {
        QTest::addColumn<bool>("confirms");
        QTest::addColumn<bool>("answer");
        QTest::addColumn<bool>("switched");
        QTest::newRow("no") << true << false << false;
        QTest::newRow("yes") << true << true << true;
        QTest::newRow("question switched off") << false << false << true;
    }
    void switchingTheModeAsksWhenServingsWouldGo() {
        QFETCH(bool, confirms);
        QFETCH(bool, answer);
        QFETCH(bool, switched);
        CFoodsViewSettings settings;
        settings.confirmServingChange = confirms;
        QVERIFY(settings.Save(m_doc->Database()));
        m_messages.answer = answer;
        CFoodEditDialog dialog(*m_doc, m_milk, 0, nullptr);
        Show(dialog);
        auto* grid = Find<CGrid>(dialog, "servings");
        QCOMPARE(grid->RowCount(), 10);
        PressRadio(dialog, "oneServing");
        const QStringList question = {
            u"Only one serving enabled in this mode. You have to know nutrient values for this "
            "serving. All current servings will be deleted. Continue?"_s};
        QCOMPARE(std::exchange(m_messages.asked, {}), confirms ? question : QStringList());
        QCOMPARE(Find<QRadioButton>(dialog, "oneServing")->isChecked(), switched);
        QCOMPARE(Find<QRadioButton>(dialog, "weighedServings")->isChecked(), !switched);
        QCOMPARE(NamesIn(grid), switched ? QStringList{QString()}
                                         : QStringList({u"1 cup"_s}) + QStringList(9, QString()));
    }

    void aNewFoodSwitchesWithoutAQuestionUntilItHasServings() {
        CFoodItem food;
        food.SetCategoryId(m_dairy);
        CFoodEditDialog dialog(*m_doc, food, -1, nullptr);
        Show(dialog);
        auto* grid = Find<CGrid>(dialog, "servings");
        QCOMPARE(NamesIn(grid), QStringList{u"1 serving"_s});
        PressRadio(dialog, "weighedServings");
        QVERIFY(m_messages.asked.isEmpty());
        QCOMPARE(NamesIn(grid), QStringList(10, QString()));
        QVERIFY(Type(grid, 2, 1, u"15"_s));
        m_messages.answer = false;
        PressRadio(dialog, "oneServing");
        QCOMPARE(std::exchange(m_messages.asked, {}).size(), 1);
        QCOMPARE(grid->CellText(2, 1), u"15"_s);
    }

    void aNewFoodIsRefusedUntilItIsWhole() {
        CFoodItem food;
        food.SetCategoryId(m_dairy);
        CFoodEditDialog dialog(*m_doc, food, -1, nullptr);
        Show(dialog);
        auto* grid = Find<CGrid>(dialog, "servings");
        PressRadio(dialog, "weighedServings");
        Find<QComboBox>(dialog, "category")->setCurrentIndex(-1);
        const auto refusedWith = [&](const QString& message) {
            PressOk(dialog);
            return m_messages.TakeShown() == QStringList{message} && dialog.isVisible();
        };
        QVERIFY(refusedWith(u"Please enter food name"_s));
        QTest::keyClicks(Find<QLineEdit>(dialog, "name"), u" Milk "_s);
        QVERIFY(refusedWith(u"Please enter food type"_s));
        QTest::keyClicks(Find<QLineEdit>(dialog, "type"), u"skimmed"_s);
        QVERIFY(refusedWith(u"Please enter at least one serving."_s));
        QVERIFY(Type(grid, 3, 0, u"glass"_s));
        QVERIFY(refusedWith(u"Please enter weight in gm for serving glass"_s));
        QVERIFY(Type(grid, 3, 1, u"200.5"_s));
        QVERIFY(refusedWith(u"There is no category selected."_s));
        Find<QComboBox>(dialog, "category")->setCurrentIndex(0);
        QVERIFY(Type(Find<CGrid>(dialog, "nutrients"), 1, 1, u"3.4567"_s));
        PressOk(dialog);
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QCOMPARE(dialog.GetFood().GetName(), u"Milk"_s);
        // The serving of row 4 closes up to serving 1, which decides the mode.
        QCOMPARE(dialog.GetFood().GetServingName(0), u"glass"_s);
        QCOMPARE(dialog.GetFood().GetServingWeight(0), 200.5);
        QCOMPARE(dialog.GetFood().GetNutrientValue(1), 3.4567);
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
        PressOk(dialog);
        const CFoodItem& food = dialog.GetFood();
        QCOMPARE(food.GetNutrientValue(0), 836 * 0.23923444976076558);
        QCOMPARE(food.GetNutrientValue(1), 3.3333333);
        QCOMPARE(food.GetNutrientValue(2), 2.5);
        QCOMPARE(food.GetNutrientValue(3), 0.0);
        QCOMPARE(food.GetNutrientValue(4), 0.0);
        QCOMPARE(food.GetServingWeight(0), 240.123456);
    }

    void onlyUserDefinedNutrientsAreRenamed() {
        CFoodsPreferencesDialog dialog(*m_doc, nullptr);
        Show(dialog);
        auto* grid = Find<CGrid>(dialog, "nutrients");
        QVERIFY(Type(grid, 10, 0, u"Rust"_s));
        QVERIFY(Type(grid, 40, 0, u"Caffeine (mg)"_s));
        QVERIFY(Type(grid, 41, 0, u" "_s));
        grid->SetChecked(0, false);
        grid->SetChecked(40, true);
        PressOk(dialog);
        const QStringList& names = m_doc->NutrientNames();
        QCOMPARE(names[10], u"Iron (mg)"_s);
        QCOMPARE(names[40], u"Caffeine (mg)"_s);
        QCOMPARE(names[41], u"User defined 8"_s);
        QVERIFY(!m_doc->Preferences().displayed.test(0));
        QVERIFY(m_doc->Preferences().displayed.test(40));
    }

    void theDisplayOptionsAreKept() {
        CFoodsPreferencesDialog dialog(*m_doc, nullptr);
        Show(dialog);
        Find<QTabWidget>(dialog, "tabs")->setCurrentIndex(1);
        Find<QAbstractButton>(dialog, "confirmServingChange")->click();
        PressOk(dialog);
        const CFoodsViewSettings settings = CFoodsViewSettings::Load(m_doc->Database());
        QVERIFY(!settings.confirmServingChange);
        QVERIFY(settings.namesInTree);
        QCOMPARE(settings.splitterPerMille, 400);
    }

    void findWantsSomethingToFind() {
        CFindDialog dialog(u"Please enter food name and/or type:"_s, {},
                           CFindDialog::EFields::NameAndType, nullptr);
        Show(dialog);
        PressOk(dialog);
        QCOMPARE(m_messages.TakeShown(),
                 QStringList{u"Please enter at least one item for find."_s});
        QTest::keyClicks(Find<QLineEdit>(dialog, "type"), u"raw"_s);
        PressOk(dialog);
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QCOMPARE(dialog.GetType(), u"raw"_s);
    }

    void init() {
        m_folder = std::make_unique<QTemporaryDir>();
        m_doc = std::make_unique<CVelmoraDoc>(m_folder->filePath(u"v.db"_s));
        QVERIFY(m_doc->OpenCatalogue());
        m_dairy = AddCategory(m_doc->Database(), u"Dairy"_s);
        m_milk = MakeFood(m_dairy, u"Milk"_s, u"whole"_s);
        m_milk.SetServingWeight(0, 240.123456);
        m_milk.SetNutrientValue(0, 100);
        m_milk.SetNutrientValue(1, 3.3333333);
        m_milk.SetNutrientValue(2, 2.5);
        m_milk.SetNutrientValue(4, 1.25);
        QVERIFY(m_doc->Database().Foods().Write(-1, m_milk));
    }
    void cleanup() {
        m_doc.reset();
        m_messages.answer = true;
        QCOMPARE(m_messages.TakeShown(), QStringList());
        QCOMPARE(m_messages.asked, QStringList());
    }

  private:
    static void Show(QDialog& dialog) {
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
    }

    CRecordingMessages m_messages;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<CVelmoraDoc> m_doc;
    CFoodItem m_milk;
    qint32 m_dairy = -1;
};

QTEST_MAIN(TestFoodsDialogs)
#include "TestFoodsDialogs.moc"

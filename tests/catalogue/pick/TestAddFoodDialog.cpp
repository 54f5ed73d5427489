#include "diary/DiaryFixture.h"

#include <QComboBox>

#include "catalogue/pick/AddFoodDialog.h"
#include "controls/ReportList.h"
#include "support/Clicks.h"

class TestAddFoodDialog : public CDiaryTest {
    Q_OBJECT

  private slots:
    void init() { MakeDiary(); }

    void keysAloneBringAFoodToTheEntry() {
        AddCatalogue();
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
        QTest::keyClick(serving, Qt::Key_Tab);
        QTest::keyClicks(QApplication::focusWidget(), u"2"_s);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        const CFoodItem& food = form.GetResult().item;
        QCOMPARE(food.GetType() + u'/' + food.GetServingName(0), u"raw/1 cup"_s);
        QCOMPARE(food.GetNutrientValue(kEnergyIndex), 130.0);
        QCOMPARE(form.GetResult().time, QTime(12, 30, 15));
    }
};

QTEST_MAIN(TestAddFoodDialog)
#include "TestAddFoodDialog.moc"

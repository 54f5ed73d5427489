#include "DiaryFixture.h"

#include <QComboBox>

#include "controls/PickList.h"
#include "controls/ReportList.h"
#include "diary/AddFoodDialog.h"
#include "support/Clicks.h"

namespace {

/// The dialog on a new entry, shown and with the parts that the tests reach for.
struct COpenDialog {
    explicit COpenDialog(CVelmoraDoc& doc)
        : form(doc, CAddFoodRequest::ForNewEntry(QTime(12, 30, 15))), dialog(form, nullptr) {
        Show(dialog);
    }
    QWidget* Rows() { return Find<CReportList>(dialog, "pickListRows"); }
    bool IsPicking() { return Find<CPickList>(dialog, "pickList")->IsOpen(); }
    void PickAppleRaw() {
        QTest::keyClick(Find<QComboBox>(dialog, "category"), Qt::Key_Down);
        for (const auto key : {Qt::Key_Return, Qt::Key_Return, Qt::Key_R, Qt::Key_Return}) {
            QTest::keyClick(Rows(), key);
        }
    }

    CAddFoodForm form;
    CAddFoodDialog dialog;
};

}  // namespace

class TestAddFoodDialog : public CDiaryTest {
    Q_OBJECT

  private slots:
    void init() { MakeDiary(); }

    void keysAloneBringAFoodToTheEntry() {
        AddCatalogue();
        COpenDialog open(*m_doc);
        QVERIFY(Find<QComboBox>(open.dialog, "category")->hasFocus());
        open.PickAppleRaw();
        QVERIFY(!open.IsPicking());
        auto* serving = Find<QComboBox>(open.dialog, "serving");
        QCOMPARE(QApplication::focusWidget(), serving);
        QTest::keyClick(serving, Qt::Key_Down);
        QCOMPARE(Find<CGrid>(open.dialog, "values")->CellText(0, 1), u"65.00"_s);  // 52 * 1.25
        QTest::keyClick(serving, Qt::Key_Tab);
        QTest::keyClicks(QApplication::focusWidget(), u"2"_s);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(open.dialog.result(), int(QDialog::Accepted));
        const CChosenFood& food = open.form.GetResult();
        QCOMPARE(food.item.GetType() + u'/' + food.item.GetServingName(0), u"raw/1 cup"_s);
        QCOMPARE(food.item.GetNutrientValue(kEnergyIndex), 130.0);
        QCOMPARE(food.time, QTime(12, 30, 15));
    }

    void aPendingCellReachesTheEntry() {
        AddCatalogue();
        COpenDialog open(*m_doc);
        open.PickAppleRaw();
        QVERIFY(TypeInto(Find<CGrid>(open.dialog, "values"), 1, 1, u"3.5"_s));
        Press(open.dialog, "ok");
        QCOMPARE(open.form.GetResult().item.GetNutrientValue(1), 3.5);
        QCOMPARE(open.form.GetResult().item.GetNutrientValue(0), 78.0);  // 52 * 1.50
    }

    void okAndCancelOnlyCloseAnOpenPickList() {
        AddCatalogue();
        COpenDialog open(*m_doc);
        for (const char* button : {"ok", "cancel"}) {
            QTest::mouseClick(Find<QComboBox>(open.dialog, "category"), Qt::LeftButton);
            QVERIFY(open.IsPicking());
            Press(open.dialog, button);
            QVERIFY(!open.IsPicking() && open.dialog.isVisible());
        }
    }
};

QTEST_MAIN(TestAddFoodDialog)
#include "TestAddFoodDialog.moc"

#include "DiaryFixture.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

#include "controls/Grid.h"
#include "controls/PickList.h"
#include "controls/ReportList.h"
#include "diary/AddFoodDialog.h"

namespace {

/// The dialog on a new entry, shown and with the parts that the tests reach for.
struct COpenDialog {
    explicit COpenDialog(CDiaryFixture& diary)
        : form(*diary.doc, CAddFoodRequest::ForNewEntry(QTime(12, 30, 15))), dialog(form, nullptr) {
        dialog.show();
        QApplication::setActiveWindow(&dialog);
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
    }
    template <typename Widget>
    Widget* Find(const char* name) {
        return dialog.findChild<Widget*>(QLatin1StringView(name));
    }
    QWidget* Rows() { return Find<CReportList>("pickListRows"); }
    bool IsPicking() { return Find<CPickList>("pickList")->IsOpen(); }
    void PickAppleRaw() {
        QTest::keyClick(Find<QComboBox>("category"), Qt::Key_Down);
        QTest::keyClick(Rows(), Qt::Key_Return);
        QTest::keyClick(Rows(), Qt::Key_Return);
        QTest::keyClick(Rows(), Qt::Key_R);
        QTest::keyClick(Rows(), Qt::Key_Return);
    }

    CAddFoodForm form;
    CAddFoodDialog dialog;
};

}  // namespace

class TestAddFoodDialog : public QObject {
    Q_OBJECT

  private slots:
    void keysAloneBringAFoodToTheEntry() {
        CDiaryFixture diary;
        diary.AddCatalogue();
        COpenDialog open(diary);
        QVERIFY(open.Find<QComboBox>("category")->hasFocus());
        open.PickAppleRaw();
        QVERIFY(!open.IsPicking());
        auto* serving = open.Find<QComboBox>("serving");
        QCOMPARE(QApplication::focusWidget(), serving);
        QTest::keyClick(serving, Qt::Key_Down);
        QCOMPARE(open.Find<CGrid>("values")->CellText(0, 1), u"65.00"_s);  // 52 * 1.25
        QTest::keyClick(serving, Qt::Key_Tab);
        QTest::keyClicks(QApplication::focusWidget(), u"2"_s);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(open.dialog.result(), int(QDialog::Accepted));
        const CChosenFood& food = open.form.GetResult();
        QCOMPARE(
            food.item.GetName() + u'/' + food.item.GetType() + u'/' + food.item.GetServingName(0),
            u"Apple/raw/1 cup"_s);
        QCOMPARE(food.item.GetServingWeight(0), 2.0);
        QCOMPARE(food.item.GetNutrientValue(kEnergyIndex), 130.0);
        QCOMPARE(food.time, QTime(12, 30, 15));
    }

    void aPendingCellReachesTheEntry() {
        CDiaryFixture diary;
        diary.AddCatalogue();
        COpenDialog open(diary);
        open.PickAppleRaw();
        auto* values = open.Find<CGrid>("values");
        QVERIFY(values->OpenCell(1, 1));
        auto* edit = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        QVERIFY(edit != nullptr);
        edit->selectAll();
        QTest::keyClicks(edit, u"3.5"_s);
        QTest::mouseClick(open.Find<QPushButton>("ok"), Qt::LeftButton);
        QCOMPARE(open.dialog.result(), int(QDialog::Accepted));
        QCOMPARE(open.form.GetResult().item.GetNutrientValue(1), 3.5);
        QCOMPARE(open.form.GetResult().item.GetNutrientValue(0), 78.0);  // 52 * 1.50
    }

    void okAndCancelOnlyCloseAnOpenPickList() {
        CDiaryFixture diary;
        diary.AddCatalogue();
        COpenDialog open(diary);
        for (const char* button : {"ok", "cancel"}) {
            QTest::mouseClick(open.Find<QComboBox>("category"), Qt::LeftButton);
            QVERIFY(open.IsPicking());
            QTest::mouseClick(open.Find<QPushButton>(button), Qt::LeftButton);
            QVERIFY(!open.IsPicking());
            QVERIFY(open.dialog.isVisible());
        }
        QCOMPARE(diary.messages.shown, QStringList());
    }

    void okStaysOpenUntilThereIsAName() {
        CDiaryFixture diary;
        COpenDialog open(diary);
        QTest::mouseClick(open.Find<QPushButton>("ok"), Qt::LeftButton);
        QCOMPARE(diary.messages.TakeShown(), QStringList{u"Please enter food name"_s});
        QVERIFY(open.dialog.isVisible());
        QTest::keyClicks(open.Find<QComboBox>("name")->lineEdit(), u"Cake"_s);
        QTest::mouseClick(open.Find<QPushButton>("ok"), Qt::LeftButton);
        QCOMPARE(open.form.GetResult().item.GetName(), u"Cake"_s);
    }
};

QTEST_MAIN(TestAddFoodDialog)
#include "TestAddFoodDialog.moc"

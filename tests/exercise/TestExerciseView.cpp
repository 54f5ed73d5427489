#include "exercise/ExerciseFixture.h"

#include <QComboBox>
#include <QDateEdit>
#include <QWheelEvent>

#include "catalogue/pick/FindDialog.h"
#include "controls/PickField.h"
#include "diary/ViewFixture.h"
#include "exercise/ExerciseEditDialog.h"
#include "exercise/ExercisesMainView.h"

class TestExerciseView : public CExercisesTest {
    Q_OBJECT

  private:
    static QString Headline(const QWidget& view) { return Find<QLabel>(view, "headline")->text(); }

  private slots:
    void init() { MakeExercises(); }

    void addingAndEditingShowTheWorkoutAndTheDaysEnergy() {
        COpenView<CExercisesMainView> open(*m_doc, "exercises", {240, 320});
        QVERIFY(open.HasHint());
        OnDialog<CExerciseEditDialog>([](CExerciseEditDialog& dialog) {
            OnDialog<CFindDialog>([](CFindDialog& find) {
                QCOMPARE(Find<QLineEdit>(find, "type2")->accessibleName(), u"Type 2"_s);
                Replace(Find<QLineEdit>(find, "type3"), u"FAST"_s);
                find.accept();
            });
            Press(dialog, "Find exercise");
            auto* type = Find<CPickField>(dialog, "type");
            QCOMPARE(type->GetText(), u"fast"_s);
            Replace(type->lineEdit(), QString(65, u'x'));
            QCOMPARE(type->GetText().size(), 64);
            type->SetText(QString(65, u'y'));  // as the library has it
            QCOMPARE(type->GetText().size(), 65);
            type->SetText(u"on ice"_s);
            Find<QComboBox>(dialog, "name")->setEditText(u"Skating"_s);
            auto* minutes = Find<QComboBox>(dialog, "minutes");
            minutes->setCurrentIndex(6);
            QWheelEvent wheel({}, {}, {}, {0, 120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                              false);
            QApplication::sendEvent(minutes, &wheel);
            QCOMPARE(minutes->currentText(), u"30"_s);
            Replace(Find<QLineEdit>(dialog, "energy"), u"294"_s);
            Press(dialog, "ok");
        });
        // The day typed, though not left, is the one that Insert adds to and that is shown then.
        auto* day = Find<QDateEdit>(open.view, "day");
        day->setFocus();
        QTest::keyClicks(day, u"15"_s);
        QTest::keyClick(open.list, Qt::Key_Insert);
        QCOMPARE(open.Row(0), u"Skating,on ice 00:30 294"_s);
        QCOMPARE(open.list->SelectedRows(), std::vector<int>{0});
        QCOMPARE(Headline(open.view), u"Total energy burned: 294/-2000/0%"_s);
        OnDialog<CExerciseEditDialog>([](CExerciseEditDialog& dialog) {
            auto* hours = Find<QComboBox>(dialog, "hours");
            auto* energy = Find<QLineEdit>(dialog, "energy");
            QCOMPARE(hours->currentText() + energy->text(), u"0294"_s);
            hours->setCurrentIndex(2);
            QCOMPARE(energy->text(), u"1470"_s);  // 150 / 30 * 294
            Replace(energy, u"260"_s);
            Press(dialog, "ok");
        });
        QTest::keyClick(open.list, Qt::Key_Return);
        QCOMPARE(open.Row(0), u"Skating,on ice 02:30 260"_s);
    }

    void keysAloneBringAnExerciseWithItsEnergy() {
        CExerciseForm form(*m_doc, NewExercise(kDay, QTime(12, 0)));
        CExerciseEditDialog dialog(form, nullptr);
        Show(dialog);
        // The second row of each list: Sports, Running, slow.
        for (int pick = 0; pick < 3; ++pick) {
            auto* field = QApplication::focusWidget();
            QTest::mouseClick(field, Qt::LeftButton);
            Press(dialog, pick > 0 ? "ok" : "cancel");
            QVERIFY(dialog.isVisible());  // only the list has closed
            QTest::keyClick(field, Qt::Key_Down);
            auto* rows = Find<CReportList>(dialog, "pickListRows");
            QTest::keyClick(rows, Qt::Key_Down);
            QTest::keyClick(rows, Qt::Key_Return);
        }
        QCOMPARE(QApplication::focusWidget(), Find<QComboBox>(dialog, "hours"));
        auto* minutes = Find<QComboBox>(dialog, "minutes");
        Replace(minutes->lineEdit(), u"30"_s);
        QCOMPARE(Find<QLineEdit>(dialog, "energy")->text(), u"294"_s);
        QTest::keyClick(minutes, Qt::Key_Return);
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QCOMPARE(form.GetResult().GetName() + form.GetResult().GetType(), u"Runningslow"_s);
    }

    void deletingSelectsTheRowThatFollows() {
        for (const QString& name : {u"A"_s, u"B"_s, u"C"_s}) {
            AddDone(name, kDay, QTime(8, 0), 10, 50);
        }
        COpenView<CExercisesMainView> open(*m_doc, "exercises", {240, 320});
        open.list->selectAll();
        m_messages->answers = {false};
        QTest::keyClick(open.list, Qt::Key_Delete);
        QCOMPARE(open.list->SelectedRows().size(), 3U);
        open.list->SelectRow(1);
        for (const int selected : {1, 0}) {
            QTest::keyClick(open.list, Qt::Key_Delete);
            QCOMPARE(open.list->SelectedRows(), std::vector<int>{selected});
        }
        QCOMPARE(Listed(), u"A,slow 00:10 50"_s);
        QCOMPARE(Headline(open.view), u"Total energy burned: 50/-2000/0%"_s);
    }

    void aDraggedColumnIsKeptAndTheUnitFollowsThePreferences() {
        AddDone(u"A"_s, kDay, QTime(8, 0), 10, 100);
        COpenView<CExercisesMainView> open(*m_doc, "exercises", {240, 320});
        QCOMPARE(open.list->columnWidth(1), 75);
        open.list->header()->resizeSection(0, 120);
        QCOMPARE(m_doc->Settings().exerciseTab.columnWidths[0], 120);
        m_doc->Settings().preferences.energyUnit = EEnergyUnit::KJ;
        open.view.DataChanged();
        QCOMPARE(open.list->columnWidth(0), 120);
        QCOMPARE(open.list->model()->headerData(2, Qt::Horizontal).toString(),
                 u"Energy burned(kJ)"_s);
        QCOMPARE(open.Row(0), u"A,slow 00:10 418"_s);
    }

    void aChosenColourIsKept() {
        const COpenView<CExercisesMainView> open(*m_doc, "exercises", {240, 320});
        m_doc->Settings().exerciseTab.backgroundColor = Rgb(10, 20, 30);
        open.TakeColor(u"Background color..."_s, u"Select background color:"_s);
        const auto* pane = Find<QWidget>(open.view, "graphPane");
        QCOMPARE(pane->palette().color(QPalette::Window), QColor(10, 20, 30));
    }
};

QTEST_MAIN(TestExerciseView)
#include "TestExerciseView.moc"

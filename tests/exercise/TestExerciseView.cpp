#include "ExerciseFixture.h"

#include <QAction>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QTimeEdit>

#include "controls/PickList.h"
#include "controls/ReportList.h"
#include "exercise/ExerciseEditDialog.h"
#include "exercise/ExercisesMainView.h"
#include "support/Clicks.h"

namespace {

struct COpenView {
    explicit COpenView(CVelmoraDoc& doc) : view(doc, nullptr) {
        view.resize(240, 320);
        Show(view);
        list = Find<CReportList>(view, "exercises");
    }
    QString Row(int row) {
        QStringList cells;
        for (int column = 0; column < 3; ++column) {
            cells.append(list->model()->index(row, column).data().toString());
        }
        return cells.join(u' ');
    }
    QString Headline() { return Find<QLabel>(view, "headline")->text(); }

    CExercisesMainView view;
    CReportList* list = nullptr;
};

}  // namespace

class TestExerciseView : public CExercisesTest {
    Q_OBJECT

  private slots:
    void init() { MakeExercises(); }

    void addingShowsTheWorkoutAndTheDaysEnergy() {
        COpenView open(*m_doc);
        QVERIFY(Find<QLabel>(open.view, "emptyHint")->isVisible());
        OnDialog<CExerciseEditDialog>([](CExerciseEditDialog& dialog) {
            Find<QComboBox>(dialog, "name")->setEditText(u"Skating"_s);
            Find<QComboBox>(dialog, "type")->setEditText(u"on ice"_s);
            Find<QComboBox>(dialog, "minutes")->setCurrentIndex(6);
            Replace(Find<QLineEdit>(dialog, "energy"), u"294"_s);
            Press(dialog, "ok");
        });
        QTest::keyClick(open.list, Qt::Key_Insert);
        QCOMPARE(open.Row(0), u"Skating,on ice 00:30 294"_s);
        QCOMPARE(open.Headline(), u"Total energy burned: 294/-2000/0%"_s);
        QVERIFY(!Find<QLabel>(open.view, "emptyHint")->isVisible());
    }

    void keysAloneBringAnExerciseWithItsEnergy() {
        CExerciseForm form(*m_doc, NewExercise(kDay, QTime(12, 0)));
        CExerciseEditDialog dialog(form, nullptr);
        Show(dialog);
        // The second row of each list: Sports, Running, slow.
        for (int pick = 0; pick < 3; ++pick) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
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
        QCOMPARE(ExerciseNameText(form.GetResult()), u"Running,slow"_s);
        QCOMPARE(form.GetResult().GetMinutes(), 30.0);
    }

    void aTypedEnergyStandsAndTheDialogScalesIt() {
        AddDone(u"Rowing"_s, kDay, QTime(8, 0), 65, 130);
        COpenView open(*m_doc);
        open.list->SelectRow(0);
        OnDialog<CExerciseEditDialog>([](CExerciseEditDialog& dialog) {
            auto* hours = Find<QComboBox>(dialog, "hours");
            auto* minutes = Find<QComboBox>(dialog, "minutes");
            auto* energy = Find<QLineEdit>(dialog, "energy");
            QCOMPARE(hours->currentText() + u':' + minutes->currentText(), u"1:05"_s);
            hours->setCurrentIndex(2);
            QCOMPARE(energy->text(), u"250"_s);  // 125 / 65 * 130
            Replace(energy, u"260"_s);
            Find<QTimeEdit>(dialog, "time")->setTime(QTime(9, 0));
            Press(dialog, "ok");
        });
        QTest::keyClick(open.list, Qt::Key_Return);
        QCOMPARE(open.Row(0), u"Rowing,slow 02:05 260"_s);
    }

    void okAndCancelOnlyCloseAnOpenPickList() {
        CExerciseForm form(*m_doc, NewExercise(kDay, QTime(12, 0)));
        CExerciseEditDialog dialog(form, nullptr);
        Show(dialog);
        auto* pickList = Find<CPickList>(dialog, "pickList");
        for (const char* button : {"ok", "cancel"}) {
            QTest::mouseClick(Find<QComboBox>(dialog, "category"), Qt::LeftButton);
            QVERIFY(pickList->IsOpen());
            Press(dialog, button);
            QVERIFY(!pickList->IsOpen() && dialog.isVisible());
        }
        QCOMPARE(m_messages->shown, QStringList());
    }

    void deletingSelectsTheRowThatFollows() {
        for (const QString& name : {u"A"_s, u"B"_s, u"C"_s}) {
            AddDone(name, kDay, QTime(8, 0), 10, 50);
        }
        COpenView open(*m_doc);
        open.list->SelectRow(1);
        QTest::keyClick(open.list, Qt::Key_Delete);
        QCOMPARE(open.list->SelectedRows(), std::vector<int>{1});
        QTest::keyClick(open.list, Qt::Key_Delete);
        QCOMPARE(open.list->SelectedRows(), std::vector<int>{0});
        QCOMPARE(Listed(), u"A,slow 00:10 50"_s);
        QCOMPARE(open.Headline(), u"Total energy burned: 50/-2000/0%"_s);
    }

    void aDraggedColumnIsKeptAndTheUnitFollowsThePreferences() {
        AddDone(u"A"_s, kDay, QTime(8, 0), 10, 100);
        COpenView open(*m_doc);
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
        COpenView open(*m_doc);
        for (QAction* action : open.view.findChildren<QAction*>()) {
            if (action->text() == "Background color..."_L1) {
                OnDialog<CDialog>([](CDialog& dialog) {
                    const auto labels = dialog.findChildren<QLabel*>();
                    QVERIFY(std::ranges::any_of(labels, [](const QLabel* label) {
                        return label->text() == "Select background color:"_L1;
                    }));
                    dialog.accept();
                });
                m_doc->Settings().exerciseTab.backgroundColor = Rgb(10, 20, 30);
                action->trigger();
            }
        }
        const auto* pane = Find<QWidget>(open.view, "graphPane");
        QCOMPARE(pane->palette().color(QPalette::Window), QColor(10, 20, 30));
    }
};

QTEST_MAIN(TestExerciseView)
#include "TestExerciseView.moc"

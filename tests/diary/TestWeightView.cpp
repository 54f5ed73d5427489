#include "DiaryFixture.h"

#include <QAction>
#include <QHeaderView>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QSplitter>
#include <QToolButton>

#include "controls/ColorDialog.h"
#include "controls/ReportList.h"
#include "diary/BmiDialog.h"
#include "diary/WeightEditDialog.h"
#include "diary/WeightMainView.h"
#include "diary/WeightRules.h"
#include "support/Clicks.h"

namespace {

struct COpenView {
    explicit COpenView(CVelmoraDoc& doc) : view(doc, nullptr) {
        view.resize(800, 600);
        Show(view);
        weights = Find<CReportList>(view, "weights");
    }
    [[nodiscard]] QAction* Action(const QString& text) const {
        for (auto* action : view.findChildren<QAction*>()) {
            if (action->text() == text) {
                return action;
            }
        }
        qFatal("There is no such command.");
        return nullptr;
    }
    [[nodiscard]] QString Cell(int row, int column) const {
        return weights->model()->index(row, column).data().toString();
    }

    CWeightMainView view;
    CReportList* weights = nullptr;
};

}  // namespace

class TestWeightView : public CDiaryTest {
    Q_OBJECT

  private:
    void AddWeights(int count) {
        for (int day = 0; day < count; ++day) {
            CWeightEntry entry;
            entry.SetMoment(ToFileTime(kDay.addDays(day), QTime(7, 30)));
            entry.SetWeightKg(70 + day);
            QVERIFY(AddWeight(*m_doc, entry));
        }
    }

  private slots:
    void init() { MakeDiary(); }

    void addingShowsTheEntry() {
        COpenView open(*m_doc);
        auto* hint = Find<QLabel>(open.view, "emptyHint");
        QVERIFY(hint->isVisible());
        OnDialog<CWeightEditDialog>([this](CWeightEditDialog& dialog) {
            auto* weight = Find<QLineEdit>(dialog, "weightMajor");
            Replace(weight, u"0.5"_s);
            Press(dialog, "ok");
            QCOMPARE(m_messages->Said(), u"Please enter correct weight."_s);
            Replace(weight, u"82.5"_s);
            Replace(Find<QLineEdit>(dialog, "waistMajor"), u"91.44"_s);
            Press(dialog, "calculateBodyFat");
            Press(dialog, "ok");
        });
        QTest::keyClick(open.weights, Qt::Key_Insert);
        QVERIFY(!hint->isVisible());
        QCOMPARE(open.Cell(0, 0), u"31 May 2026"_s);
        QCOMPARE(open.Cell(0, 1) + u' ' + open.Cell(0, 4), u"82.50 91.44"_s);
        // 82.5 kg are 181.8795 lb, 91.44 cm 36 in: 36.065881 lb of fat.
        QCOMPARE(open.Cell(0, 10), u"19.83"_s);
        QCOMPARE(open.weights->SelectedRows(), std::vector<int>{0});
    }

    void stonesHaveTwoFieldsOnTheSmallestScreen() {
        m_doc->Settings().preferences.weightUnit = EWeightUnit::Stones;
        m_doc->Settings().preferences.heightUnit = EHeightUnit::Feet;
        CWeightEntry entry;
        entry.SetWeightKg(71.5);  // 157.6289 lb
        CWeightForm form(entry, m_doc->Preferences(), true);
        CWeightEditDialog dialog(form, nullptr);
        dialog.resize(240, 320);
        Show(dialog);
        // Nothing sticks out at the side.
        QCOMPARE(Find<QScrollArea>(dialog, "content")->horizontalScrollBar()->maximum(), 0);
        auto* stones = Find<QLineEdit>(dialog, "weightMajor");
        auto* pounds = Find<QLineEdit>(dialog, "weightMinor");
        QCOMPARE(stones->text() + u' ' + pounds->text(), u"11 3.63"_s);
        QCOMPARE(Find<QLineEdit>(dialog, "chestMajor")->accessibleName(), u"Chest, in"_s);
        const QSignalSpy returns(stones, &QLineEdit::returnPressed);
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape}) {
            QTest::keyClick(stones, key);
            QVERIFY(dialog.isVisible());
        }
        QCOMPARE(returns.size(), 2);
        QTest::keyClick(stones, Qt::Key_Tab);
        QVERIFY(pounds->hasFocus());
    }

    void theRowAtTheOldPlaceOrOfTheDayIsSelected() {
        AddWeights(3);
        COpenView open(*m_doc);
        QVERIFY(open.weights->SelectedRows().empty());
        open.Action(u"Edit weight..."_s)->trigger();
        QCOMPARE(m_messages->Said(), u"Please select weight to edit."_s);
        Find<QToolButton>(open.view, "Next day")->click();
        QCOMPARE(open.weights->SelectedRows(), std::vector<int>{1});
        OnDialog<CWeightEditDialog>([](CWeightEditDialog& dialog) {
            Replace(Find<QLineEdit>(dialog, "weightMajor"), u"75"_s);
            Press(dialog, "ok");
        });
        QTest::keyClick(open.weights, Qt::Key_Return);
        QCOMPARE(open.Cell(1, 1), u"75.00"_s);
        QCOMPARE(open.weights->SelectedRows(), std::vector<int>{1});
        open.weights->SelectRow(2);
        open.Action(u"Delete weight..."_s)->trigger();
        QCOMPARE(open.weights->RowCount(), 2);
        QCOMPARE(open.weights->SelectedRows(), std::vector<int>{1});
    }

    void theTableStandsInTheColoursOfTheRisk() {
        AddWeights(1);
        m_doc->Settings().user.heightCm = 175;
        m_doc->Settings().targets.startWeightKg = m_doc->Settings().targets.goalWeightKg = 70;
        COpenView open(*m_doc);
        OnDialog<CBmiDialog>([](CBmiDialog& dialog) {
            QCOMPARE(Find<QLabel>(dialog, "bmi")->text(), u"Your BMI is  22.86"_s);  // 70 / 3.0625
            auto* table = Find<CReportList>(dialog, "bmiTable");
            QCOMPARE(table->SelectedRows(), std::vector<int>{11});
            QCOMPARE(table->columnWidth(0), table->width() / 4);
            for (const auto& [row, color] :
                 {std::pair(0, "#7f7f7f"), {1, "#ff4b4b"}, {11, "#00ff00"}, {20, "#ffff00"}}) {
                const QModelIndex cell = table->model()->index(row, 1);
                table->scrollTo(cell);
                const QRect area = table->visualRect(cell);
                const QImage picture = table->viewport()->grab(area).toImage();
                QCOMPARE(picture.pixelColor(area.width() - 3, 3), QColor(color));
            }
            Press(dialog, "ok");
        });
        open.Action(u"BMI..."_s)->trigger();
    }

    void theGraphsMenuChangesItsSettings() {
        const COpenView open(*m_doc);
        QVERIFY(open.Action(u"Show goal line"_s)->isChecked());
        open.Action(u"Show goal line"_s)->trigger();
        QVERIFY(!m_doc->Settings().weightTab.showGoalLine);
        OnDialog<CColorDialog>([](CColorDialog& dialog) {
            QCOMPARE(dialog.findChild<QLabel*>()->text(), u"Select goal line color:"_s);
            dialog.accept();
        });
        m_doc->Settings().weightTab.goalLineColor = Rgb(1, 2, 3);
        open.Action(u"Goal line color..."_s)->trigger();
        QCOMPARE(m_doc->Settings().weightTab.goalLineColor, std::optional(Rgb(1, 2, 3)));
        QVERIFY(!m_doc->Settings().weightTab.textColor);
    }

    void draggedColumnsAndSplitOutliveTheView() {
        {
            COpenView open(*m_doc);
            open.weights->header()->resizeSection(2, 133);
            open.view.StoreLayout();
            auto* split = Find<QSplitter>(open.view, "split");
            QTest::mousePress(split->handle(1), Qt::LeftButton);
            QTest::mouseMove(split->handle(1), QPoint(10, -100));
            QTest::mouseRelease(split->handle(1), Qt::LeftButton, {}, QPoint(10, -100));
        }
        QCOMPARE(m_doc->Settings().weightTab.columnWidths[2], 133);
        QCOMPARE(m_doc->Settings().weightTab.columnWidths[0], 0);
        QVERIFY(m_doc->Settings().weightTab.splitterPerMille < 400);
        const COpenView again(*m_doc);
        QCOMPARE(again.weights->header()->sectionSize(2), 133);
        QVERIFY(again.weights->height() < Find<QWidget>(again.view, "graph")->height());
    }
};

QTEST_MAIN(TestWeightView)
#include "TestWeightView.moc"

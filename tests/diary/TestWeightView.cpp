#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>

#include "diary/BmiDialog.h"
#include "diary/ViewFixture.h"
#include "diary/WeightEditDialog.h"
#include "diary/WeightMainView.h"
#include "diary/WeightRules.h"

class TestWeightView : public CDiaryTest {
    Q_OBJECT

  private:
    void AddWeights(int count) {
        for (int day = 0; day < count; ++day) {
            QVERIFY(AddWeight(*m_doc, MakeWeight(kDay.addDays(day), QTime(7, 30), 70 + day)));
        }
    }

  private slots:
    void init() { MakeDiary(); }

    void addingShowsTheEntry() {
        COpenView<CWeightMainView> open(*m_doc, "weights");
        QVERIFY(open.HasHint());
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
        QTest::keyClick(open.list, Qt::Key_Insert);
        QVERIFY(!open.HasHint());
        // 82.5 kg are 181.8795 lb, 91.44 cm 36 in: 36.065881 lb of fat.
        const QString row = open.Row(0, 11);
        QVERIFY(row.startsWith(u"31 May 2026 82.50 ") && row.endsWith(u" 19.83"));
        QCOMPARE(open.list->SelectedRows(), std::vector<int>{0});
    }

    void stonesHaveTwoFieldsOnTheSmallestScreen() {
        m_doc->Settings().preferences.weightUnit = EWeightUnit::Stones;
        m_doc->Settings().preferences.heightUnit = EHeightUnit::Feet;
        // 157.6289 lb
        CWeightForm form(MakeWeight(kDay, QTime(7, 30), 71.5), m_doc->Preferences(), true);
        CWeightEditDialog dialog(form, nullptr);
        dialog.resize(240, 320);
        Show(dialog);
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
        COpenView<CWeightMainView> open(*m_doc, "weights");
        QVERIFY(open.list->SelectedRows().empty());
        open.Trigger(u"Edit weight..."_s);
        QCOMPARE(m_messages->Said(), u"Please select weight to edit."_s);
        Find<QToolButton>(open.view, "Next day")->click();
        QCOMPARE(open.list->SelectedRows(), std::vector<int>{1});
        OnDialog<CWeightEditDialog>([](CWeightEditDialog& dialog) {
            Replace(Find<QLineEdit>(dialog, "weightMajor"), u"75"_s);
            Press(dialog, "ok");
        });
        QTest::keyClick(open.list, Qt::Key_Return);
        QCOMPARE(open.Row(1, 2), u"1 Jun 2026 75.00"_s);
        QCOMPARE(open.list->SelectedRows(), std::vector<int>{1});
        open.list->selectAll();
        m_messages->answers = {false};
        open.Trigger(u"Delete weight..."_s);
        QCOMPARE(open.list->SelectedRows().size(), 3U);
        open.list->SelectRow(2);
        open.Trigger(u"Delete weight..."_s);
        QCOMPARE(open.list->RowCount(), 2);
        QCOMPARE(open.list->SelectedRows(), std::vector<int>{1});
    }

    void theTableStandsInTheColoursOfTheRisk() {
        AddWeights(1);
        m_doc->Settings().user.heightCm = 175;
        m_doc->Settings().targets.startWeightKg = m_doc->Settings().targets.goalWeightKg = 70;
        COpenView<CWeightMainView> open(*m_doc, "weights");
        OnDialog<CBmiDialog>([](CBmiDialog& dialog) {
            QCOMPARE(Find<QLabel>(dialog, "bmi")->text(), u"Your BMI is  22.86"_s);  // 70 / 3.0625
            auto* table = Find<CReportList>(dialog, "bmiTable");
            QCOMPARE(table->SelectedRows(), std::vector<int>{11});
            const int rest =
                table->width() / 2 - table->verticalScrollBar()->sizeHint().width() - 3;
            QCOMPARE(table->GetColumnWidths(),
                     (std::vector<int>{table->width() / 4, table->width() / 4, rest}));
            for (const auto& [row, color] :
                 {std::pair(0, "#7f7f7f"), {1, "#ff4b4b"}, {11, "#00ff00"}, {20, "#ffff00"}}) {
                const QModelIndex cell = table->model()->index(row, 1);
                table->scrollTo(cell);
                const QRect area = table->visualRect(cell);
                const QImage picture = table->viewport()->grab(area).toImage();
                QCOMPARE(picture.pixelColor(area.width() - 3, 3), QColor(color));
            }
        });
        open.Trigger(u"BMI..."_s);
    }

    void theGraphsMenuChangesItsSettings() {
        const COpenView<CWeightMainView> open(*m_doc, "weights");
        open.Trigger(u"Show goal line"_s);
        QVERIFY(!m_doc->Settings().weightTab.showGoalLine);
        m_doc->Settings().weightTab.goalLineColor = Rgb(1, 2, 3);
        open.TakeColor(u"Goal line color..."_s, u"Select goal line color:"_s);
        QCOMPARE(m_doc->Settings().weightTab.goalLineColor, std::optional(Rgb(1, 2, 3)));
        QVERIFY(!m_doc->Settings().weightTab.textColor);
    }

    void draggedColumnsAndTheSplitAreKept() {
        {
            COpenView<CWeightMainView> open(*m_doc, "weights");
            open.list->header()->resizeSection(2, 133);
            open.view.StoreLayout();
        }
        m_doc->Settings().weightTab.splitterPerMille = 300;
        QCOMPARE(m_doc->Settings().weightTab.columnWidths[2], 133);
        QCOMPARE(m_doc->Settings().weightTab.columnWidths[0], 0);
        const COpenView<CWeightMainView> again(*m_doc, "weights");
        QCOMPARE(again.list->header()->sectionSize(2), 133);
        QVERIFY(again.list->height() < Find<QWidget>(again.view, "graph")->height());
    }
};

QTEST_MAIN(TestWeightView)
#include "TestWeightView.moc"

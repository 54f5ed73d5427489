// What the views of the diary paint, drag and leave out.
#include "DiaryFixture.h"

#include <QAction>
#include <QHeaderView>
#include <QPainter>
#include <QScrollBar>
#include <QSplitter>

#include "diary/DietMainView.h"
#include "diary/TotalsList.h"
#include "diary/weight/BmiDialog.h"
#include "diary/weight/WeightMainView.h"
#include "exercise/ExercisesMainView.h"
#include "support/Clicks.h"

namespace {
template <typename View>
struct COpenView {
    COpenView(CVelmoraDoc& doc, const char* listName) : view(doc, nullptr) {
        view.resize(800, 600);
        Show(view);
        list = Find<CReportList>(view, listName);
    }
    View view;
    CReportList* list = nullptr;
};
}  // namespace

class TestDiaryViews : public CDiaryTest {
    Q_OBJECT

  private:
    static QString Total(const QWidget& view, int column) {
        return Find<CTotalsList>(view, "totals")->model()->index(0, column).data().toString();
    }

  private slots:
    void init() { MakeDiary(); }

    void whatTheDayLeavesOutIsSaidUnderTheList() {
        {
            CRecordGroup group(Database().GetStore());
            for (int i = 0; i < 130; ++i) {
                AddEntry(u"Pea"_s, QTime(8, 0), i % 2 == 0 ? 0 : 2, 1);
            }
        }
        COpenView<CDietMainView> open(*m_doc, "entries");
        const QString note =
            u"The list and the totals cover the first 128 of this day's 130 "
            "entries."_s;
        QCOMPARE(NoteOf(open.view), note);
        QCOMPARE(open.list->RowCount(), 64);  // of the meal
        QCOMPARE(Total(open.view, 2), u"128/"_s);
        open.list->selectAll();
        QTest::keyClick(open.list, Qt::Key_Delete);
        QCOMPARE(NoteOf(open.view), QString());
        QCOMPARE(Total(open.view, 2), u"66/"_s);
    }

    void damageIsSaidUnderTheListOfEachDiary() {
        for (const int hour : {8, 9, 10}) {
            AddEntry(u"Tea"_s, QTime(hour, 0));
            AddDone(u"Walk"_s, kDay, QTime(hour, 0), 10, 50);
            QVERIFY(Database().Weight().Write(-1, MakeWeight(kDay, QTime(hour, 0), 80)));
        }
        DamageEntry(Database().Diet(), 1);
        DamageEntry(Database().Weight(), 1);
        DamageEntry(Database().Exercises(), 1);
        m_doc->dayShown = kDay;
        const QString note = u"1 damaged entry is left out."_s;
        COpenView<CDietMainView> diet(*m_doc, "entries");
        QCOMPARE(NoteOf(diet.view), note);
        QCOMPARE(diet.list->RowCount(), 2);
        COpenView<CWeightMainView> weights(*m_doc, "weights");
        QCOMPARE(NoteOf(weights.view), note);
        COpenView<CExercisesMainView> exercises(*m_doc, "exercises");
        QCOMPARE(NoteOf(exercises.view), note);
        QCOMPARE(m_messages->Said(), QString());
    }

    void anEntryOfADamagedKindIsAFood() {
        CDietEntry entry = AddEntry(u"Tea"_s, QTime(8, 0)).entry;
        entry.SetKind(static_cast<EItemKind>(7));
        QVERIFY(Database().Diet().Write(-1, entry));
        COpenView<CDietMainView> open(*m_doc, "entries");
        const QAbstractItemModel* rows = open.list->model();
        const auto picture = [rows](int row) {
            return rows->index(row, 0).data(Qt::DecorationRole).value<QIcon>().pixmap(20).toImage();
        };
        QCOMPARE(picture(1), picture(0));
        QCOMPARE(rows->index(1, 0).data(Qt::AccessibleDescriptionRole), u"Food"_s);
    }

    void onlyWhatWasAddedAndIsListedIsSelected() {
        AddCatalogue();
        {
            CRecordGroup group(Database().GetStore());
            for (int i = 0; i < 127; ++i) {
                AddEntry(u"Pea"_s, QTime(0, 0));
            }
        }
        COpenView<CDietMainView> open(*m_doc, "entries");
        auto* line = Find<QLineEdit>(open.view, "quick");
        Replace(line, u"apple, apple"_s);
        QTest::keyClick(line, Qt::Key_Return);
        QCOMPARE(open.list->RowCount(), 128);
        QCOMPARE(open.list->SelectedRows(), std::vector<int>{127});
    }

    void returnWaitsForTheSearchAndTheWindowStaysAlive() {
        const qint32 category = AddCategory(Database(), u"Kitchen"_s);
        {
            CRecordGroup group(Database().GetStore());
            for (int i = 0; i <= 10000; ++i) {
                AddFood(category, u"Egg"_s, QString::number(i), 1, {{u"1 large"_s, 50}});
            }
        }
        COpenView<CDietMainView> open(*m_doc, "entries");
        auto* line = Find<QLineEdit>(open.view, "quick");
        line->setFocus();
        line->setText(u"egg"_s);
        QTest::keyClick(line, Qt::Key_Return);
        QCOMPARE(open.list->RowCount(), 0);
        QTRY_COMPARE(open.list->RowCount(), 1);
        QCOMPARE(line->text(), QString());
    }

    void barsAreDrawnInTheirColours() {
        QPixmap cell(44, 18);
        const auto colorsOf = [&cell](double target) {
            cell.fill(Qt::white);
            QPainter painter(&cell);
            DrawTotalsBar(painter, cell.rect(), BarOf(100, target));
            painter.end();
            QStringList colors;  // corner, frame, border, first, left and right of the middle, last
            for (const int x : {1, 2, 3, 4, 21, 22, 39}) {
                colors.append(cell.toImage().pixelColor(x, 9).name());
            }
            return colors.join(u' ');
        };
        const QString edge = u"#ffffff #606060 #000000 "_s;
        QCOMPARE(colorsOf(0), edge + u"#ffff00 #ffff00 #ffff00 #ffff00"_s);
        QCOMPARE(colorsOf(200), edge + u"#00ff00 #00ff00 #ffff00 #ffff00"_s);
        QCOMPARE(colorsOf(100), edge + u"#ff0000 #ff0000 #ff0000 #ff0000"_s);
    }

    void draggedColumnsAndSplitOutliveTheView() {
        {
            COpenView<CDietMainView> open(*m_doc, "entries");
            open.list->header()->resizeSection(2, 133);
            open.view.StoreLayout();
            auto* split = open.view.findChild<QSplitter*>(u"split"_s);
            QTest::mousePress(split->handle(1), Qt::LeftButton);
            QTest::mouseMove(split->handle(1), QPoint(10, -100));
            QTest::mouseRelease(split->handle(1), Qt::LeftButton, {}, QPoint(10, -100));
        }
        QCOMPARE(m_doc->Settings().dietTab.columnWidths[2], 133);
        QCOMPARE(m_doc->Settings().dietTab.columnWidths[0], 0);
        QVERIFY(m_doc->Settings().dietTab.splitterPerMille < 400);
        COpenView<CExercisesMainView>(*m_doc, "exercises").list->header()->resizeSection(0, 120);
        const COpenView<CExercisesMainView> exercises(*m_doc, "exercises");
        QCOMPARE(exercises.list->columnWidth(0), 120);
        COpenView<CDietMainView> again(*m_doc, "entries");
        QCOMPARE(again.list->header()->sectionSize(2), 133);
        QVERIFY(again.list->height() < Find<QWidget>(again.view, "totals")->height());
    }

    void theTableStandsInTheColoursOfTheRisk() {
        QVERIFY(Database().Weight().Write(-1, MakeWeight(kDay, QTime(7, 0), 70)));
        m_doc->Settings().user.heightCm = 175;
        m_doc->Settings().targets.startWeightKg = m_doc->Settings().targets.goalWeightKg = 70;
        COpenView<CWeightMainView> open(*m_doc, "weights");
        OnDialog<CBmiDialog>([](CBmiDialog& dialog) {
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
        const auto actions = open.view.findChildren<QAction*>();
        (*std::ranges::find(actions, u"BMI..."_s, &QAction::text))->trigger();
    }
};

QTEST_MAIN(TestDiaryViews)
#include "TestDiaryViews.moc"

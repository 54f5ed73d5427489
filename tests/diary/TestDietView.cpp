#include <QComboBox>
#include <QPainter>
#include <QTabBar>

#include "catalogue/pick/AddFoodDialog.h"
#include "diary/DietMainView.h"
#include "diary/DietMoveDialog.h"
#include "diary/TotalsList.h"
#include "diary/ViewFixture.h"
#include "diary/WeightMainView.h"
#include "exercise/ExercisesMainView.h"

class TestDietView : public CDiaryTest {
    Q_OBJECT

  private:
    static CTotalsList* Totals(const QWidget& view) { return Find<CTotalsList>(view, "totals"); }
    static QString Total(const QWidget& view, int column) {
        return Totals(view)->model()->index(0, column).data().toString();
    }

  private slots:
    void init() { MakeDiary(); }

    void addingShowsTheEntryAndItsTotals() {
        m_doc->Settings().targets.nutrients[kEnergyIndex] = 2000;
        COpenView<CDietMainView> open(*m_doc, "entries");
        QVERIFY(open.HasHint());
        OnDialog<CAddFoodDialog>([](CAddFoodDialog& dialog) {
            Press(dialog, "ok");
            QVERIFY(dialog.isVisible());  // for want of a name
            Find<QComboBox>(dialog, "name")->setEditText(u"Cake"_s);
            Press(dialog, "ok");
        });
        QTest::keyClick(open.list, Qt::Key_Insert);
        QCOMPARE(m_messages->Said(), u"Please enter food name"_s);
        QVERIFY(!open.HasHint());
        QCOMPARE(Total(open.view, 3), u"2000/"_s);
        QVERIFY(Stored().join(u'|').startsWith(u"Cake 31"_s));
    }

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
        for (const QString& diary : {u"Diet"_s, u"Weight"_s, u"Exercises"_s}) {
            CItemDatabaseBase& damaged =
                diary == u"Diet"_s     ? static_cast<CItemDatabaseBase&>(Database().Diet())
                : diary == u"Weight"_s ? static_cast<CItemDatabaseBase&>(Database().Weight())
                                       : Database().Exercises();
            Damage(damaged, 1);
            QVERIFY(m_doc->SetActiveProfile(u"Ann"_s));
            m_doc->dayShown = kDay;
        }
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

    void theLastRowIsSelectedWhenTheLastOneGoes() {
        for (const QString& name : {u"Tea"_s, u"Bun"_s, u"Egg"_s}) {
            AddEntry(name, QTime(8, 0));
        }
        COpenView<CDietMainView> open(*m_doc, "entries");
        open.list->selectAll();
        m_messages->answers = {false};
        QTest::keyClick(open.list, Qt::Key_Delete);
        QCOMPARE(open.list->SelectedRows().size(), 3U);
        open.list->SelectRow(2);
        QTest::keyClick(open.list, Qt::Key_Delete);
        QCOMPARE(m_messages->asked.last(), u"Are you sure you want to delete entry 'Egg'?"_s);
        QCOMPARE(open.list->SelectedRows(), std::vector<int>{1});
        open.list->selectAll();
        QTest::keyClick(open.list, Qt::Key_Delete);
        QCOMPARE(open.list->RowCount(), 0);
        QCOMPARE(Total(open.view, 2), u"0/"_s);
    }

    void severalEntriesMoveAfterOneDialog() {
        AddEntry(u"Tea"_s, QTime(8, 0));
        AddEntry(u"Bun"_s, QTime(9, 0));
        COpenView<CDietMainView> open(*m_doc, "entries");
        open.list->selectAll();
        OnDialog<CDietMoveDialog>([](CDietMoveDialog& dialog) {
            QCOMPARE(dialog.GetPlace().meal, 2);
            QCOMPARE(TimeOf(dialog.GetPlace().moment), QTime(8, 0));
            Find<QComboBox>(dialog, "meal")->setCurrentIndex(5);
            dialog.accept();
        });
        QTest::keyClick(open.list, Qt::Key_M, Qt::ControlModifier);
        QCOMPARE(Stored(), (QStringList{u"Tea 31 08:00 E"_s, u"Bun 31 08:00 E"_s}));
        QCOMPARE(open.list->RowCount(), 0);  // lunch is shown
        Find<QTabBar>(open.view, "meals")->setCurrentIndex(kAllMeals);
        open.Trigger(u"Add entry..."_s);
        QVERIFY(m_messages->Said().startsWith(u"Please select a meal."_s));
        open.list->SelectRow(0);
        open.Trigger(u"Duplicate entry..."_s);
        QCOMPARE(open.list->RowCount(), 3);
        QCOMPARE(open.list->SelectedRows(), std::vector<int>{0});
    }

    void theButtonsWalkThroughTheDays() {
        AddEntry(u"Tea"_s, QTime(8, 0));
        COpenView<CDietMainView> open(*m_doc, "entries");
        Find<QToolButton>(open.view, "Next day")->click();
        QCOMPARE(open.list->RowCount(), 0);
        QCOMPARE(m_doc->dayShown, QDate(2026, 6, 1));
        Find<QToolButton>(open.view, "Previous day")->click();
        QCOMPARE(open.list->RowCount(), 1);
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

    void aChosenBackgroundReachesBothLists() {
        m_doc->Settings().dietTab.backgroundColor = Rgb(20, 30, 90);
        AddEntry(u"Tea"_s, QTime(8, 0));
        COpenView<CDietMainView> open(*m_doc, "entries");
        for (CReportList* list : {open.list, static_cast<CReportList*>(Totals(open.view))}) {
            const QImage picture = list->viewport()->grab().toImage();
            QCOMPARE(picture.pixelColor(picture.width() / 2, picture.height() - 2),
                     QColor(20, 30, 90));
            QCOMPARE(list->palette().color(QPalette::Text), QColor(Qt::white));
        }
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
        COpenView<CDietMainView> again(*m_doc, "entries");
        QCOMPARE(again.list->header()->sectionSize(2), 133);
        QVERIFY(again.list->height() < Totals(again.view)->height());
    }
};

QTEST_MAIN(TestDietView)
#include "TestDietView.moc"

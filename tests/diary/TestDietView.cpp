#include "DiaryFixture.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QPainter>
#include <QSplitter>
#include <QToolButton>

#include "diary/AddFoodDialog.h"
#include "diary/DietMainView.h"
#include "diary/DietMoveDialog.h"
#include "diary/TotalsList.h"
#include "support/Clicks.h"

namespace {

struct COpenView {
    explicit COpenView(CVelmoraDoc& doc) : view(doc, nullptr) {
        view.resize(800, 600);
        Show(view);
        entries = Find<CReportList>(view, "entries");
        totals = Find<CTotalsList>(view, "totals");
    }
    QString Total(int row, int column) {
        return totals->model()->index(row, column).data().toString();
    }

    CDietMainView view;
    CReportList* entries = nullptr;
    CTotalsList* totals = nullptr;
};

}  // namespace

class TestDietView : public CDiaryTest {
    Q_OBJECT

  private slots:
    void init() { MakeDiary(); }

    void addingShowsTheEntryAndItsTotals() {
        m_doc->Settings().targets.nutrients[kEnergyIndex] = 2000;
        COpenView open(*m_doc);
        auto* hint = open.view.findChild<QLabel*>(u"emptyHint"_s);
        QVERIFY(hint->isVisible());
        OnDialog<CAddFoodDialog>([](CAddFoodDialog& dialog) {
            Press(dialog, "ok");
            QVERIFY(dialog.isVisible());  // for want of a name
            Find<QComboBox>(dialog, "name")->setEditText(u"Cake"_s);
            Press(dialog, "ok");
        });
        QTest::keyClick(open.entries, Qt::Key_Insert);
        QCOMPARE(m_messages->Said(), u"Please enter food name"_s);
        QVERIFY(!hint->isVisible());
        QCOMPARE(open.entries->model()->index(0, 0).data().toString(), u"Cake"_s);
        QCOMPARE(open.Total(0, 3), u"2000/"_s);
        QVERIFY(Stored().join(u'|').startsWith(u"Cake 31"_s));
    }

    void theLastRowIsSelectedWhenTheLastOneGoes() {
        AddEntry(u"Tea"_s, QTime(8, 0));
        AddEntry(u"Bun"_s, QTime(9, 0));
        AddEntry(u"Egg"_s, QTime(10, 0));
        COpenView open(*m_doc);
        open.entries->SelectRow(2);
        QTest::keyClick(open.entries, Qt::Key_Delete);
        QCOMPARE(m_messages->asked, QStringList{u"Are you sure you want to delete entry 'Egg'?"_s});
        QCOMPARE(open.entries->SelectedRows(), std::vector<int>{1});
        open.entries->selectAll();
        QTest::keyClick(open.entries, Qt::Key_Delete);
        QCOMPARE(open.entries->RowCount(), 0);
        QCOMPARE(open.Total(0, 2), u"0/"_s);
    }

    void severalEntriesMoveAfterOneDialog() {
        AddEntry(u"Tea"_s, QTime(8, 0));
        AddEntry(u"Bun"_s, QTime(9, 0));
        COpenView open(*m_doc);
        open.entries->selectAll();
        OnDialog<CDietMoveDialog>([](CDietMoveDialog& dialog) {
            QCOMPARE(dialog.GetPlace().meal, 2);
            QCOMPARE(TimeOf(dialog.GetPlace().moment), QTime(8, 0));
            Find<QComboBox>(dialog, "meal")->setCurrentIndex(5);
            dialog.accept();
        });
        QTest::keyClick(open.entries, Qt::Key_M, Qt::ControlModifier);
        QCOMPARE(Stored(), (QStringList{u"Tea 31 08:00 E"_s, u"Bun 31 08:00 E"_s}));
        QCOMPARE(open.entries->RowCount(), 0);  // lunch is shown
    }

    void theButtonsWalkThroughTheDays() {
        AddEntry(u"Tea"_s, QTime(8, 0));
        COpenView open(*m_doc);
        const auto entriesAfter = [&](const QString& button) {
            open.view.findChild<QToolButton*>(button)->click();
            return open.entries->RowCount();
        };
        QCOMPARE(entriesAfter(u"Next day"_s), 0);
        QCOMPARE(m_doc->dayShown, QDate(2026, 6, 1));
        QCOMPARE(entriesAfter(u"Previous day"_s), 1);
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
        COpenView open(*m_doc);
        for (CReportList* list : {open.entries, static_cast<CReportList*>(open.totals)}) {
            const QImage picture = list->viewport()->grab().toImage();
            QCOMPARE(picture.pixelColor(picture.width() / 2, picture.height() - 2),
                     QColor(20, 30, 90));
            QCOMPARE(list->palette().color(QPalette::Text), QColor(Qt::white));
        }
    }

    void draggedColumnsAndSplitOutliveTheView() {
        {
            COpenView open(*m_doc);
            open.entries->header()->resizeSection(2, 133);
            open.view.StoreLayout();
            auto* split = open.view.findChild<QSplitter*>(u"split"_s);
            QTest::mousePress(split->handle(1), Qt::LeftButton);
            QTest::mouseMove(split->handle(1), QPoint(10, -100));
            QTest::mouseRelease(split->handle(1), Qt::LeftButton, {}, QPoint(10, -100));
        }
        QCOMPARE(m_doc->Settings().dietTab.columnWidths[2], 133);
        QCOMPARE(m_doc->Settings().dietTab.columnWidths[0], 0);
        QVERIFY(m_doc->Settings().dietTab.splitterPerMille < 400);
        COpenView again(*m_doc);
        QCOMPARE(again.entries->header()->sectionSize(2), 133);
        QVERIFY(again.entries->height() < again.totals->height());
    }
};

QTEST_MAIN(TestDietView)
#include "TestDietView.moc"

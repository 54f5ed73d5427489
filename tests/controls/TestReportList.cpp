#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include "controls/ReportList.h"

using namespace Qt::StringLiterals;

namespace {

CReportRows Rows(int count) {
    return {.count = count,
            .text = [](int row, int column) { return u"%1/%2"_s.arg(row).arg(column); },
            .icon = {}};
}

}  // namespace

class TestReportList : public QObject {
    Q_OBJECT
  private slots:
    void reloadsReselectTheOldRowOrTheLast_data() {
        QTest::addColumn<int>("rows");
        QTest::addColumn<int>("selected");
        QTest::addColumn<std::vector<int>>("expected");
        QTest::newRow("same row") << 5 << 3 << std::vector<int>{3};
        QTest::newRow("shorter list") << 3 << 4 << std::vector<int>{2};
        QTest::newRow("empty list") << 0 << 4 << std::vector<int>{};
        QTest::newRow("none selected before") << 5 << -1 << std::vector<int>{};
    }
    void reloadsReselectTheOldRowOrTheLast() {
        QFETCH(int, rows);
        QFETCH(int, selected);
        QFETCH(std::vector<int>, expected);
        CReportList list(u"Foods"_s);
        list.SetColumns({u"A"_s, u"B"_s});
        list.SetRows(Rows(5));
        list.SelectRow(4);
        list.SetRows(Rows(rows));
        QVERIFY(list.SelectedRows().empty() && !list.currentIndex().isValid());
        list.SelectRow(selected);
        QCOMPARE(list.SelectedRows(), expected);
        QCOMPARE(list.currentIndex().row(), expected.empty() ? -1 : expected[0]);
    }

    void severalRowsComeInAscendingOrder() {
        CReportList list(u"Foods"_s);
        list.SetColumns({u"A"_s, u"B"_s});
        list.SetRows(Rows(6));
        for (const int row : {4, 1, 3}) {
            list.selectionModel()->select(list.model()->index(row, 0),
                                          QItemSelectionModel::Select | QItemSelectionModel::Rows);
        }
        QCOMPARE(list.SelectedRows(), (std::vector<int>{1, 3, 4}));
    }

    void reloadsKeepScrollPositionAndWidths() {
        CReportList list(u"Foods"_s);
        list.SetColumns({u"A"_s, u"B"_s});
        list.SetColumnWidths({77, 0});
        const int secondWidth = list.GetColumnWidths()[1];
        list.resize(200, 200);
        list.show();
        list.SetRows(Rows(1000));
        list.verticalScrollBar()->setValue(500);
        list.SetRows(Rows(900));
        QCOMPARE(list.verticalScrollBar()->value(), 500);
        QCOMPARE(list.indexAt({5, 5}).data().toString(), u"500/0"_s);
        QCOMPARE(list.GetColumnWidths(), (std::vector<int>{77, secondWidth}));
        list.SetRows(Rows(2));
        QCOMPARE(list.verticalScrollBar()->value(), 0);
        list.SetRows(Rows(1000));
        list.SelectRow(700);
        QVERIFY(list.viewport()->rect().contains(list.visualRect(list.currentIndex())));
    }

    void textStaysReadableOnItsBackground_data() {
        QTest::addColumn<QColor>("background");
        QTest::addColumn<QColor>("text");
        // Relative luminance 0.18 divides: black contrasts more above, white below.
        QTest::newRow("white") << QColor(255, 255, 255) << QColor(0, 0, 0);
        QTest::newRow("navy") << QColor(0, 0, 128) << QColor(255, 255, 255);
        QTest::newRow("green, 0.715") << QColor(0, 255, 0) << QColor(0, 0, 0);
        QTest::newRow("red, 0.213") << QColor(255, 0, 0) << QColor(0, 0, 0);
        QTest::newRow("grey, 0.184") << QColor(119, 119, 119) << QColor(0, 0, 0);
        QTest::newRow("grey, 0.175") << QColor(116, 116, 116) << QColor(255, 255, 255);
    }
    void textStaysReadableOnItsBackground() {
        QFETCH(QColor, background);
        QFETCH(QColor, text);
        CReportList list(u"Foods"_s);
        const QPalette before = list.palette();
        list.SetBackgroundColor(background);
        QCOMPARE(list.palette().color(QPalette::Base), background);
        QCOMPARE(list.palette().color(QPalette::Text), text);
        QCOMPARE(list.palette().color(QPalette::Highlight), before.color(QPalette::Highlight));
        list.SetBackgroundColor({});
        QCOMPARE(list.palette(), before);
    }

    void returnActivatesTheCurrentRowAndGoesNoFurther() {
        QWidget window;
        auto* list = new CReportList(u"Foods"_s, &window);
        list->SetColumns({u"A"_s});
        list->SetRows(Rows(3));
        list->SelectRow(1);
        QKeyEvent unused(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QCoreApplication::sendEvent(list, &unused);
        QVERIFY(!unused.isAccepted());
        QSignalSpy activated(list, &CReportList::activated);
        QKeyEvent used(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QCoreApplication::sendEvent(list, &used);
        QVERIFY(used.isAccepted());
        QCOMPARE(activated.count(), 1);
        QCOMPARE(activated[0][0].toModelIndex().row(), 1);
    }
};

QTEST_MAIN(TestReportList)
#include "TestReportList.moc"

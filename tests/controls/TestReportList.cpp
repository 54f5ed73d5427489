#include <QAbstractItemModelTester>
#include <QClipboard>
#include <QGuiApplication>
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
    void rowsAreSelectedWhereTheyAreAndListedInOrder() {
        CReportList list(u"Foods"_s);
        list.SetColumns({u"A"_s, u"B"_s});
        const std::tuple<int, int, std::vector<int>> rows[] = {
            {5, 3, {3}}, {3, 4, {2}}, {0, 4, {}}, {5, -1, {}}};
        for (const auto& [count, selected, expected] : rows) {
            list.SetRows(Rows(5));
            list.SelectRow(4);
            list.SetRows(Rows(count));
            QVERIFY(list.SelectedRows().empty() && !list.currentIndex().isValid());
            list.SelectRow(selected);
            QCOMPARE(list.SelectedRows(), expected);
            QCOMPARE(list.currentIndex().row(), expected.empty() ? -1 : expected[0]);
        }
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

    void textStaysReadableOnItsBackground() {
        CReportList list(u"Foods"_s);
        const QPalette before = list.palette();
        // Relative luminance 0.18 divides: black contrasts more above, white below.
        const std::pair<QColor, QColor> rows[] = {
            {Qt::white, Qt::black},       {{0, 0, 128}, Qt::white},
            {{0, 255, 0}, Qt::black},      // 0.715
            {{255, 0, 0}, Qt::black},      // 0.213
            {{119, 119, 119}, Qt::black},  // 0.184
            {{116, 116, 116}, Qt::white},  // 0.175
        };
        for (const auto& [background, text] : rows) {
            list.SetBackgroundColor(background);
            QCOMPARE(list.palette().color(QPalette::Base), background);
            QCOMPARE(list.palette().color(QPalette::Text), text);
            QCOMPARE(list.palette().color(QPalette::Highlight), before.color(QPalette::Highlight));
        }
        list.SetBackgroundColor({});
        QCOMPARE(list.palette(), before);
    }

    void copyingTakesTheSelectedRowsAsShown() {
        CReportList list(u"Foods"_s);
        const QAbstractItemModelTester sound(list.model(),
                                             QAbstractItemModelTester::FailureReportingMode::Fatal);
        const auto copied = [&list](const std::vector<int>& rows) {
            list.clearSelection();
            for (const int row : rows) {
                list.selectionModel()->select(
                    list.model()->index(row, 0),
                    QItemSelectionModel::Select | QItemSelectionModel::Rows);
            }
            QGuiApplication::clipboard()->setText(u"kept"_s);
            QTest::keyClick(&list, Qt::Key_C, Qt::ControlModifier);
            return QGuiApplication::clipboard()->text();
        };
        QCOMPARE(copied({}), u"kept"_s);  // without columns
        list.SetColumns({u"A"_s, u"B"_s});
        QCOMPARE(copied({}), u"kept"_s);
        list.SetRows(Rows(4));
        QCOMPARE(copied({}), u"kept"_s);
        QCOMPARE(copied({3, 1}), u"1/0\t1/1\n3/0\t3/1"_s);
        list.SetRows({.count = 1, .text = [](int, int) { return u"a\tb\nc"_s; }, .icon = {}});
        QCOMPARE(copied({0}), u"a b c\ta b c"_s);
        list.SetRows({});
        QCOMPARE(copied({}), u"kept"_s);
        QVERIFY(!list.model()->data({}, Qt::DisplayRole).isValid());
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

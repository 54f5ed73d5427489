#include <QAbstractItemModelTester>
#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include "controls/ReportList.h"

using namespace Qt::StringLiterals;

namespace {

CReportRows Rows(int count) {
    return {.count = count,
            .text = [](int row, int column) { return u"%1/%2"_s.arg(row).arg(column); }};
}

std::vector<CReportColumn> TwoColumns() {
    return {{.title = u"A"_s}, {.title = u"B"_s, .kind = CReportColumn::EKind::Number}};
}

void ClickHeader(CReportList& list, int column) {
    const QHeaderView* header = list.header();
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                      {header->sectionViewportPosition(column) + 20, header->height() / 2});
}

QStringList ShownTexts(const CReportList& list) {
    QStringList texts;
    for (int place = 0; place < list.RowCount(); ++place) {
        texts.append(list.model()->index(place, 0).data().toString());
    }
    return texts;
}

}  // namespace

class TestReportList : public QObject {
    Q_OBJECT
  private slots:
    void rowsAreSelectedWhereTheyAreAndListedInOrder() {
        CReportList list(u"Foods"_s);
        list.SetColumns(TwoColumns());
        const std::tuple<int, int, std::vector<int>> rows[] = {
            {5, 3, {3}}, {3, 4, {2}}, {0, 4, {}}, {5, -1, {}}};
        for (const auto& [count, selected, expected] : rows) {
            list.SetRows(Rows(5));
            list.SelectRow(4);
            list.SetRows(Rows(count));
            QVERIFY(list.SelectedRows().empty() && !list.currentIndex().isValid());
            list.SelectPlace(selected);
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
        list.SetColumns(TwoColumns());
        list.resize(200, 200);
        list.show();
        list.SetColumnWidths({77, 80});
        list.SetRows(Rows(1000));
        list.verticalScrollBar()->setValue(500);
        list.SetRows(Rows(900));
        QCOMPARE(list.verticalScrollBar()->value(), 500);
        QCOMPARE(list.indexAt({5, 5}).data().toString(), u"500/0"_s);
        QCOMPARE(list.GetColumnWidths(), (std::vector<int>{77, 80}));
        list.SetRows(Rows(2));
        QCOMPARE(list.verticalScrollBar()->value(), 0);
        list.SetRows(Rows(1000));
        list.SelectRow(700);
        QVERIFY(list.viewport()->rect().contains(list.visualRect(list.currentIndex())));
    }

    void aHeaderClickSortsAndTheThirdGivesTheOrderBack() {
        const QStringList names = {u"pear"_s, u"Apple"_s, u"fig"_s, u"apple"_s};
        const std::vector<double> numbers = {9, 10, -1, 2.5};
        CReportList list(u"Foods"_s);
        list.resize(300, 200);
        list.show();
        list.SetColumns(TwoColumns());
        CReportRows rows{.count = 4, .text = [&](int row, int) { return names[row]; }};
        list.SetRows(rows);
        ClickHeader(list, 0);  // nothing to sort by
        QCOMPARE(ShownTexts(list), names);
        rows.sortKey = [&](int row, int column) -> QVariant {
            return column == 0 ? QVariant(names[row]) : numbers[row];
        };
        list.SetRows(rows);
        list.SelectRow(2);

        const std::tuple<int, std::vector<int>> clicks[] = {
            {0, {1, 3, 2, 0}},  // equal without case: the owner's order
            {0, {0, 2, 1, 3}},
            {0, {0, 1, 2, 3}},
            {1, {2, 3, 0, 1}},
            {1, {1, 0, 3, 2}}};
        bool isClick = false;
        for (const auto& [column, order] : clicks) {
            isClick = !isClick;
            if (isClick) {
                ClickHeader(list, column);
            } else {
                QTest::keyClick(&list, static_cast<Qt::Key>(Qt::Key_1 + column), Qt::AltModifier);
            }
            QCOMPARE(list.SelectedRows(), std::vector<int>{2});
            QCOMPARE(order[list.CurrentPlace()], 2);
            QStringList expected;
            for (const int row : order) {
                expected.append(names[row]);
            }
            QCOMPARE(ShownTexts(list), expected);
        }
        list.selectAll();
        QCOMPARE(list.SelectedRows(), (std::vector<int>{1, 0, 3, 2}));
        QCOMPARE(list.FirstSelectedPlace(), 0);
        // The order outlives a change of the rows, not one of the columns.
        rows.count = 3;
        list.SetRows(rows);
        QCOMPARE(ShownTexts(list), (QStringList{u"Apple"_s, u"pear"_s, u"fig"_s}));
        list.SelectRow(0);
        QCOMPARE(list.CurrentPlace(), 1);
        list.SetColumn(u"C"_s);
        list.SetRows(rows);
        QCOMPARE(ShownTexts(list), names.first(3));
    }

    void columnsShareWhatIsLeftUntilOneIsDragged() {
        CReportList list(u"Foods"_s);
        list.resize(400, 200);
        list.show();
        list.SetColumns({{.title = u"A"_s, .least = 40, .share = 3},
                         {.title = u"B"_s, .least = 40},
                         {.title = u"C"_s, .width = 60}});
        QSignalSpy dragged(&list, &CReportList::ColumnDragged);
        const int left = list.viewport()->width() - 60 - 2 * 40;
        QCOMPARE(list.GetColumnWidths(),
                 (std::vector<int>{40 + left * 3 / 4, 40 + left - left * 3 / 4, 60}));
        list.resize(500, 200);
        QCOMPARE(list.header()->length(), list.viewport()->width());
        // Texts with room enough change nothing.
        const std::vector<int> shared = list.GetColumnWidths();
        list.SetContentWidth(0, shared[0]);
        list.SetContentWidth(1, shared[1]);
        QCOMPARE(list.GetColumnWidths(), shared);
        // Long texts get their width, up to half of the list, even if it has to scroll then.
        for (const auto& [content, width] : {std::pair(420, 250), {330, 250}, {240, 240}}) {
            list.resize(500 + list.width() - list.viewport()->width(), 200);
            list.SetContentWidth(1, content);
            list.SetContentWidth(0, 250);
            QCOMPARE(list.GetColumnWidths()[1], width);
        }
        list.SetContentWidth(0, 0);
        list.SetContentWidth(1, 0);
        QCOMPARE(dragged.count(), 0);
        list.header()->resizeSection(1, 50);
        QCOMPARE(dragged, (QList<QList<QVariant>>{{1, 50}}));
        list.resize(600, 200);
        QCOMPARE(list.GetColumnWidths()[1], 50);
        QCOMPARE(list.header()->length(), list.viewport()->width());
    }

    void aScreenReaderHearsHeadingsAndPictures() {
        CReportList list(u"Entries"_s);
        list.SetColumns(TwoColumns());
        CReportRows rows = Rows(2);
        rows.iconText = [](int row) { return row == 0 ? u"Food"_s : u"Menu"_s; };
        rows.heading = [](int row) { return row == 1 ? u"Lunch"_s : QString(); };
        list.SetRows(rows);
        QStringList heard;
        auto* spoken = QAccessible::queryAccessibleInterface(&list);
        for (int row = 0; row < 2; ++row) {
            for (int column = 0; column < 2; ++column) {
                const auto* cell = spoken->tableInterface()->cellAt(row, column);
                heard.append(cell->text(QAccessible::Name) + u'/' +
                             cell->text(QAccessible::Description));
            }
        }
        QCOMPARE(heard.join(u' '), u"0/0/Food 0/1/ Lunch: 1/0/Menu 1/1/"_s);
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
        list.SetColumns(TwoColumns());
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

    void returnPassesAListWhoseRowsOpenNothing() {
        QWidget window;
        auto* list = new CReportList(u"Foods"_s, &window);
        list->SetColumn(u"A"_s);
        list->SetRows(Rows(3));
        list->SelectRow(1);
        QKeyEvent unused(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QCoreApplication::sendEvent(list, &unused);
        QVERIFY(!unused.isAccepted());
    }
};

QTEST_MAIN(TestReportList)
#include "TestReportList.moc"

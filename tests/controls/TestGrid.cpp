#include <QAccessible>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QSignalSpy>
#include <QVBoxLayout>

#include "support/Clicks.h"

/// A window with a grid of two columns, 120 and 80 pixels wide, and a field beside it.
class TestGrid : public QObject {
    Q_OBJECT

  private:
    std::unique_ptr<QWidget> m_window;
    CGrid* m_grid = nullptr;
    QLineEdit* m_field = nullptr;
    std::unique_ptr<QSignalSpy> m_ended;

    void Make(EGridKind kind, int rows) {
        m_window = std::make_unique<QWidget>();
        auto* layout = new QVBoxLayout(m_window.get());
        const QStringList titles =
            kind == EGridKind::Checks ? QStringList{u"Name"_s} : QStringList{u"A"_s, u"B"_s};
        m_grid = new CGrid(kind, titles, u"Nutrients"_s);
        m_field = new QLineEdit;
        layout->addWidget(m_grid);
        layout->addWidget(m_field);
        m_grid->SetRowCount(rows);
        m_grid->SetChoices({u"gm"_s, u"cup"_s, u"piece"_s});
        m_window->resize(300, 300);
        Show(*m_window);
        m_grid->setColumnWidth(0, 120);
        if (kind != EGridKind::Checks) {
            m_grid->setColumnWidth(1, 80);
        }
        m_ended = std::make_unique<QSignalSpy>(m_grid, &CGrid::LabelEditEnded);
    }

    QRect Cell(int row, int column) const {
        return m_grid->visualRect(m_grid->model()->index(row, column));
    }
    void Click(int row, int column) {
        QTest::mouseClick(m_grid->viewport(), Qt::LeftButton, {}, Cell(row, column).center());
    }
    /// "row,column:text" of each notification, "-" for a cancelled one.
    QStringList Ended() const {
        QStringList all;
        for (const QList<QVariant>& arguments : *m_ended) {
            const auto text = arguments[2].value<std::optional<QString>>();
            all << u"%1,%2:%3"_s.arg(arguments[0].toInt())
                       .arg(arguments[1].toInt())
                       .arg(text.value_or(u"-"_s));
        }
        return all;
    }

  private slots:
    void anEditEndsWithOneNotification() {
        const auto press = [](Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); };
        // The notification, what has the focus then, and the cell's text.
        const std::tuple<std::function<void()>, QString, bool, QString> rows[] = {
            {[&] { press(Qt::Key_Return); }, u"1,1:12"_s, true, u"7"_s},
            {[&] { press(Qt::Key_Escape); }, u"1,1:-"_s, true, u"7"_s},
            {[&] { m_field->setFocus(); }, u"1,1:12"_s, false, u"7"_s},
            {[&] { Click(2, 0); }, u"1,1:12"_s, true, u"7"_s},
            {[&] { m_grid->EndEditing(); }, u"1,1:12"_s, true, u"7"_s},
            {[&] { m_grid->SetRowCount(0); }, u"1,1:-"_s, true, {}},
        };
        for (const auto& [end, expected, isGridFocused, text] : rows) {
            Make(EGridKind::Values, 3);
            m_grid->SetCellText(1, 1, u"7"_s);
            Click(1, 1);
            QPointer<QLineEdit> edit = m_grid->findChild<QLineEdit*>();
            QVERIFY(edit != nullptr);
            QCOMPARE(edit->text(), u"7"_s);
            QTest::keyClicks(edit, u"12"_s);
            end();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QCOMPARE(Ended(), QStringList{expected});
            QVERIFY(edit == nullptr && !m_grid->IsEditing() && !m_grid->EndEditing());
            QVERIFY(isGridFocused ? m_grid->hasFocus() : m_field->hasFocus());
            QCOMPARE(m_grid->CellText(1, 1), text);
        }
    }

    void onlySomeCellsOpen() {
        const std::tuple<EGridKind, int, int, int, bool> rows[] = {
            {EGridKind::Values, 2, 0, 100, false},  // a nutrient's name
            {EGridKind::Values, 1, 1, 5, true},     // its value
            {EGridKind::Values, 1, 1, 4, false},    // too narrow
            {EGridKind::Values, 1, 2, 0, false},    // past the last column
            {EGridKind::Choices, 1, 0, 15, true},   // a serving's name
            {EGridKind::Choices, 1, 0, 14, false},  // too narrow
            {EGridKind::Choices, 1, 1, 80, false},  // weight of the only serving
            {EGridKind::Choices, 2, 1, 80, true},  {EGridKind::Checks, 1, 0, 230, true},
        };
        for (const auto& [kind, rowCount, column, width, opens] : rows) {
            Make(kind, rowCount);
            if (column < m_grid->model()->columnCount()) {
                m_grid->setColumnWidth(column, width);
            }
            QCOMPARE(m_grid->OpenCell(0, column), opens);
            QCOMPARE(m_grid->IsEditing(), opens);
            QCOMPARE(m_grid->findChild<QComboBox*>() != nullptr,
                     opens && kind == EGridKind::Choices && column == 0);
        }
    }

    void anEmptyRowIsHeardAsSuch() {
        Make(EGridKind::Choices, 2);
        m_grid->SetCellText(0, 0, u"cup"_s);
        auto* table = QAccessible::queryAccessibleInterface(m_grid)->tableInterface();
        const auto heard = [table](int row, int column) {
            return table->cellAt(row, column)->text(QAccessible::Name);
        };
        QCOMPARE(heard(0, 0), u"cup"_s);
        QCOMPARE(heard(1, 0), u"Empty row"_s);
        QCOMPARE(heard(1, 1), QString());
        const auto nameOfEditor = [this](int row, int column) {
            m_grid->OpenCell(row, column);
            return QApplication::focusWidget()->accessibleName();
        };
        QCOMPARE(nameOfEditor(0, 0), u"A"_s);
        QCOMPARE(nameOfEditor(0, 1), u"cup, B"_s);
        m_grid->SetCellText(0, 0, {});
        QCOMPARE(heard(0, 0), u"Empty row"_s);
        QCOMPARE(nameOfEditor(0, 1), u"B"_s);
        m_grid->SetCellText(0, 1, u"100"_s);
        QCOMPARE(heard(0, 0), u"No name"_s);
    }

    void editorsCoverTheirCells() {
        Make(EGridKind::Choices, 12);
        m_grid->OpenCell(1, 1);
        const int top = Cell(1, 1).top();
        const int height = Cell(1, 1).height();
        // 120 - 1 from the left, 80 - 4 wide.
        QCOMPARE(m_grid->findChild<QLineEdit*>()->geometry(), QRect(119, top - 1, 76, height));
        m_grid->OpenCell(1, 0);
        auto* box = m_grid->findChild<QComboBox*>();
        // From 19 on to the column's edge: 120 - 19 wide.
        QCOMPARE(box->geometry(), QRect(19, top - 1, 101, height));
        QCOMPARE(box->view()->sizeHintForRow(0), height);
        QCOMPARE(box->maxVisibleItems(), 8);

        m_grid->OpenCell(11, 1);  // below what is in sight
        QVERIFY(m_grid->viewport()->rect().contains(Cell(11, 1)));

        // Twice as wide as the client area: scrolled to the cell's beginning, and clipped there.
        const int client = m_grid->viewport()->width();
        m_grid->setColumnWidth(1, 2 * client);
        for (int time = 0; time < 2; ++time) {
            m_grid->OpenCell(1, 1);
            QCOMPARE(m_grid->columnViewportPosition(1), 0);
        }
        QCOMPARE(m_grid->findChildren<QLineEdit*>(u"inPlaceEdit"_s).last()->width(), client);
    }

    void typingWidensTheBoxUpToTheClientArea() {
        Make(EGridKind::Values, 2);
        m_grid->setColumnWidth(0, 100);
        m_grid->setColumnWidth(1, 30);
        m_grid->OpenCell(0, 1);
        auto* edit = m_grid->findChild<QLineEdit*>();
        QTest::keyClicks(edit, u"1"_s);
        QCOMPARE(edit->width(), 26);
        QTest::keyClicks(edit, u"0000000"_s);
        const int widened = edit->width();
        QVERIFY(widened >= m_grid->fontMetrics().horizontalAdvance(u"10000000"_s));
        QTest::keyClicks(edit, QString(100, u'0'));
        QCOMPARE(edit->geometry().right(), m_grid->viewport()->rect().right());
        QVERIFY(edit->width() > widened);
    }

    void theKeyboardReachesEveryCellAndGetsOut() {
        Make(EGridKind::Values, 2);
        m_grid->SetCellText(0, 1, u"7"_s);
        m_grid->setCurrentIndex(m_grid->model()->index(0, 0));
        m_grid->setFocus();
        QTest::keyClick(m_grid, Qt::Key_Right);
        QCOMPARE(m_grid->currentIndex().column(), 1);
        QTest::keyClick(m_grid, Qt::Key_F2);
        QCOMPARE(QApplication::focusWidget()->property("text").toString(), u"7"_s);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        for (const auto key :
             {Qt::Key_Left, Qt::Key_3, Qt::Key_5, Qt::Key_Tab, Qt::Key_4, Qt::Key_Tab}) {
            QTest::keyClick(QApplication::focusWidget(), key);
        }
        QCOMPARE(Ended(), (QStringList{u"0,1:-"_s, u"0,1:35"_s, u"1,1:4"_s}));
        QCOMPARE(QApplication::focusWidget(), m_field);
        QTest::keyClick(m_field, Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(QApplication::focusWidget(), m_grid);
        QTest::keyClick(m_grid, Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), m_field);
    }

    void lettersAreNotTypedWhereNumbersBelong() {
        Make(EGridKind::Choices, 2);
        m_grid->OpenCell(0, 1);
        auto* edit = m_grid->findChild<QLineEdit*>();
        QTest::keyClicks(edit, u"1x2.5 e\u00b5"_s);
        for (const QString& composed : {u"b"_s, u"7"_s}) {
            QInputMethodEvent event(composed, {});
            event.setCommitString(composed);
            QCoreApplication::sendEvent(edit, &event);
        }
        QCOMPARE(edit->text(), u"12.5 7"_s);
        // The leading number of what is pasted counts.
        QGuiApplication::clipboard()->setText(u"30 g"_s);
        QTest::keyClick(edit, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(edit, Qt::Key_V, Qt::ControlModifier);
        QTest::keyClick(edit, Qt::Key_Return);
        QCOMPARE(Ended(), QStringList{u"0,1:30 g"_s});
        for (const auto& [column, opens] : {std::pair{1, false}, {0, true}}) {
            m_grid->setCurrentIndex(m_grid->model()->index(1, column));
            QTest::keyClick(m_grid, Qt::Key_X);
            QCOMPARE(m_grid->IsEditing(), opens);
        }
        QCOMPARE(m_grid->findChild<QComboBox*>()->currentText(), u"x"_s);
    }

    void namesTakeWhatTheValuesLeave() {
        const CGrid grid(EGridKind::Values, {u"A"_s, u"B"_s}, u"Nutrients"_s);
        QCOMPARE(grid.columnWidth(1),
                 grid.fontMetrics().horizontalAdvance(u"99999.99"_s) + grid.fontMetrics().height());
        Make(EGridKind::Values, 2);
        m_grid->setColumnWidth(0, m_grid->viewport()->width() - 80);
        m_window->resize(240, 320);
        QCOMPARE(m_grid->columnWidth(0), m_grid->viewport()->width() - 80);
        m_grid->setColumnWidth(0, 50);
        m_window->resize(400, 320);
        QCOMPARE(m_grid->columnWidth(0), 50);
    }
};

QTEST_MAIN(TestGrid)
#include "TestGrid.moc"

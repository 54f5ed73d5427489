#include "controls/ReportList.h"

#include <QClipboard>
#include <QEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMetaMethod>
#include <QRegularExpression>
#include <QScrollBar>
#include <algorithm>
#include <utility>

#include "controls/Colors.h"
#include "controls/EmptyListHint.h"
#include "controls/RowDelegate.h"

CReportList::CReportList(const QString& accessibleName, QWidget* parent)
    : CRowTree(parent), m_model(new CReportModel(this)) {
    setModel(m_model);
    setItemDelegate(new CRowDelegate(this));
    setAccessibleName(accessibleName);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setAllColumnsShowFocus(true);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setHorizontalScrollMode(ScrollPerPixel);
    setContextMenuPolicy(Qt::CustomContextMenu);
    header()->setSectionsMovable(false);
    header()->setStretchLastSection(false);
    header()->setSortIndicatorClearable(true);
    connect(header(), &QHeaderView::sortIndicatorChanged, this,
            [this](int column, Qt::SortOrder order) {
                m_model->sort(column, order);
                scrollTo(currentIndex());
            });
    connect(header(), &QHeaderView::sectionResized, this, [this](int column, int, int width) {
        if (!m_laysOut && column < std::ssize(m_columns)) {
            m_columns[column].width = width;
            emit ColumnDragged(column, width);
        }
    });
}

void CReportList::SetColumns(std::vector<CReportColumn> columns) {
    if (!std::ranges::equal(columns, m_columns, {}, &CReportColumn::title, &CReportColumn::title)) {
        header()->setSortIndicator(-1, Qt::AscendingOrder);
    }
    m_columns = std::move(columns);
    m_model->SetColumns(m_columns);
    LayColumnsOut();
}

void CReportList::SetRows(CReportRows rows) {
    const int position = verticalScrollBar()->value();
    setUniformRowHeights(rows.heading == nullptr);
    m_model->SetRows(std::move(rows), header()->sortIndicatorSection(),
                     header()->sortIndicatorOrder());
    header()->setSectionsClickable(m_model->CanSort());
    header()->setSortIndicatorShown(m_model->CanSort());
    doItemsLayout();
    verticalScrollBar()->setValue(position);
    if (m_hint != nullptr) {
        m_hint->ShowWhen(RowCount() == 0);
    }
}

// As QHeaderView does it for a click.
bool CReportList::SortBy(int column) {
    QHeaderView& titles = *header();
    if (isHeaderHidden() || !titles.sectionsClickable() || column < 0 || column >= titles.count()) {
        return false;
    }
    const bool isSame = titles.sortIndicatorSection() == column;
    const bool wasUp = titles.sortIndicatorOrder() == Qt::AscendingOrder;
    titles.setSortIndicator(isSame && !wasUp ? -1 : column,
                            isSame && wasUp ? Qt::DescendingOrder : Qt::AscendingOrder);
    return true;
}

void CReportList::drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const {
    const QString heading = HeadingOf(index);
    QStyleOptionViewItem row = option;
    if (!heading.isEmpty()) {
        QRect above = option.rect;
        above.setHeight(HeadingHeight(option));
        row.rect.setTop(above.bottom() + 1);
        PaintHeading(painter, option, above, heading);
    }
    CRowTree::drawRow(painter, row, index);
}

int CReportList::RowCount() const {
    return m_model->rowCount();
}

std::vector<int> CReportList::SelectedRows() const {
    std::vector<int> places;
    for (const QModelIndex& index : selectionModel()->selectedRows()) {
        places.push_back(index.row());
    }
    std::ranges::sort(places);
    std::ranges::transform(places, places.begin(),
                           [this](int place) { return m_model->RowAt(place); });
    return places;
}

int CReportList::FirstSelectedPlace() const {
    int first = -1;
    for (const QModelIndex& index : selectionModel()->selectedRows()) {
        first = first < 0 ? index.row() : std::min(first, index.row());
    }
    return first;
}

void CReportList::SelectRow(int row) {
    SelectIndex(m_model->index(m_model->PlaceOf(row), 0));
}

void CReportList::SelectSeveral(const std::vector<int>& rows) {
    if (!rows.empty()) {
        SelectRow(rows.back());
    }
    for (const int row : rows) {
        selectionModel()->select(m_model->index(m_model->PlaceOf(row), 0),
                                 QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
}

void CReportList::SelectPlace(int place) {
    SelectIndex(m_model->index(std::min(place, RowCount() - 1), 0));
}

void CReportList::SelectIndex(const QModelIndex& index) {
    if (!index.isValid()) {
        return;
    }
    selectionModel()->setCurrentIndex(
        index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    scrollTo(index);
}

void CReportList::ScrollToRow(int row) {
    scrollTo(m_model->index(m_model->PlaceOf(row), 0));
}

std::vector<int> CReportList::GetColumnWidths() const {
    std::vector<int> widths;
    for (int column = 0; column < m_model->columnCount(); ++column) {
        widths.push_back(columnWidth(column));
    }
    return widths;
}

void CReportList::SetColumnWidths(const std::vector<int>& widths) {
    const auto columns = std::min(widths.size(), m_columns.size());
    for (size_t column = 0; column < columns; ++column) {
        if (widths[column] > 0) {
            m_columns[column].width = widths[column];
        }
    }
    LayColumnsOut();
}

int CReportList::LeastWidth(int column) const {
    const CReportColumn& wanted = m_columns[column];
    return wanted.least > 0 ? wanted.least
                            : fontMetrics().horizontalAdvance(wanted.title) + kTitleMargin;
}

void CReportList::SetContentWidth(int column, int width) {
    m_columns[column].content = width;
    LayColumnsOut();
}

void CReportList::LayColumnsOut() {
    std::vector<int> least(m_columns.size());
    for (size_t column = 0; column < least.size(); ++column) {
        least[column] = LeastWidth(static_cast<int>(column));
    }
    std::vector<int> widths = SharedWidths(least);
    // What one column gets more for its texts may leave another too narrow for its own.
    for (size_t column = 0; column < widths.size();) {
        const int content = std::min(m_columns[column].content, viewport()->width() / 2);
        const bool isCut = m_columns[column].width == 0 && widths[column] < content;
        if (isCut) {
            least[column] = content;
            widths = SharedWidths(least);
        }
        column = isCut ? 0 : column + 1;
    }
    m_laysOut = true;
    for (size_t column = 0; column < widths.size(); ++column) {
        setColumnWidth(static_cast<int>(column), widths[column]);
    }
    m_laysOut = false;
}

std::vector<int> CReportList::SharedWidths(const std::vector<int>& least) const {
    int left = viewport()->width();
    int shares = 0;
    std::vector<int> widths;
    for (size_t column = 0; column < m_columns.size(); ++column) {
        const CReportColumn& wanted = m_columns[column];
        widths.push_back(wanted.width > 0 ? wanted.width : least[column]);
        left -= widths.back();
        shares += wanted.width > 0 ? 0 : wanted.share;
    }
    left = std::max(0, left);
    for (size_t column = 0; column < m_columns.size(); ++column) {
        const CReportColumn& wanted = m_columns[column];
        if (wanted.width == 0 && shares > 0) {
            const int part = left * wanted.share / shares;
            widths[column] += part;
            left -= part;
            shares -= wanted.share;
        }
    }
    return widths;
}

void CReportList::SetEmptyHint(const QString& text) {
    if (m_hint == nullptr) {
        m_hint = new CEmptyListHint(viewport());
        connect(m_hint, &CEmptyListHint::OfferTaken, this, &CReportList::OfferTaken);
    }
    m_hint->SetText(text);
    m_hint->ShowWhen(RowCount() == 0);
}

void CReportList::SetEmptyOffers(const QStringList& offers) {
    m_hint->SetOffers(offers);
}

void CReportList::SetBackgroundColor(const QColor& color) {
    QPalette colors;
    // Only the roles set here leave the inherited palette.
    colors.setResolveMask(0);
    if (color.isValid()) {
        colors.setColor(QPalette::Base, color);
        colors.setColor(QPalette::Text, ReadableTextColor(color));
    }
    setPalette(colors);
}

QString CReportList::SelectedText() const {
    static const QRegularExpression separators(QStringLiteral("[\t\r\n]"));
    QStringList lines;
    for (const int row : SelectedRows()) {
        QStringList cells;
        for (int column = 0; column < m_model->columnCount(); ++column) {
            const QString cell = m_model->index(m_model->PlaceOf(row), column).data().toString();
            cells.append(QString(cell).replace(separators, QStringLiteral(" ")));
        }
        lines.append(cells.join(u'\t'));
    }
    return lines.join(u'\n');
}

// The arrow keys select only what they move to, and there may be nowhere to move.
void CReportList::focusInEvent(QFocusEvent* event) {
    QTreeView::focusInEvent(event);
    const bool isByTab =
        event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    if (isByTab && currentIndex().isValid() && !selectionModel()->hasSelection() &&
        selectionMode() != NoSelection) {
        setCurrentIndex(currentIndex());
    }
}

void CReportList::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) {
        if (const QString text = SelectedText(); !text.isEmpty()) {
            QGuiApplication::clipboard()->setText(text);
        }
        event->accept();
        return;
    }
    const int offer = event->key() - Qt::Key_1;
    const bool isPlain = (event->modifiers() & ~Qt::KeypadModifier) == 0;
    // On some keyboards a digit needs the shift key.
    const bool isAlt =
        (event->modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier)) == Qt::AltModifier;
    if (isAlt && SortBy(offer)) {
        return;
    }
    if (RowCount() == 0 && isPlain && m_hint != nullptr && offer >= 0 &&
        offer < m_hint->OfferCount()) {
        emit OfferTaken(offer);
        return;
    }
    if (RowCount() == 0 && m_hint != nullptr && m_hint->ScrollByKey(event->key())) {
        return;
    }
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    static const QMetaMethod activation = QMetaMethod::fromSignal(&QTreeView::activated);
    if (isReturn && currentIndex().isValid() && isSignalConnected(activation)) {
        // The base class would pass the key on to the dialog's OK as well.
        emit activated(currentIndex());
        return;
    }
    QTreeView::keyPressEvent(event);
}

void CReportList::resizeEvent(QResizeEvent* event) {
    QTreeView::resizeEvent(event);
    LayColumnsOut();
}

void CReportList::changeEvent(QEvent* event) {
    QTreeView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        LayColumnsOut();
    }
}

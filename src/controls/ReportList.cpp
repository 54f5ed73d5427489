#include "controls/ReportList.h"

#include <QAbstractTableModel>
#include <QClipboard>
#include <QEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMetaMethod>
#include <QRegularExpression>
#include <QScrollBar>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

#include "controls/RowDelegate.h"

namespace {

constexpr int kHintMargin = 8;

/// Linear light of one sRGB channel, 0 to 1.
double LinearChannel(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

/// Relative luminance of sRGB (ITU-R BT.709 weights), 0 to 1.
double Luminance(const QColor& color) {
    return 0.2126 * LinearChannel(color.redF()) + 0.7152 * LinearChannel(color.greenF()) +
           0.0722 * LinearChannel(color.blueF());
}

}  // namespace

QColor ReadableTextColor(const QColor& background) {
    // WCAG contrast is (lighter + 0.05) / (darker + 0.05), so that of black and that of white are
    // equal where (luminance + 0.05) squared is 1.05 * 0.05.
    const double light = Luminance(background) + 0.05;
    return light * light > 1.05 * 0.05 ? Qt::black : Qt::white;
}

class CReportList::CModel : public QAbstractTableModel {
  public:
    using QAbstractTableModel::QAbstractTableModel;

    void SetColumns(const std::vector<CReportColumn>& columns) {
        beginResetModel();
        m_columns = columns;
        m_rows = {};
        m_order.clear();
        endResetModel();
    }

    void SetRows(CReportRows rows, int sortColumn, Qt::SortOrder order) {
        beginResetModel();
        m_rows = std::move(rows);
        Order(sortColumn, order);
        endResetModel();
    }

    [[nodiscard]] bool CanSort() const { return m_rows.sortKey != nullptr; }
    [[nodiscard]] int RowAt(int place) const { return m_order[place]; }
    /// -1 for a row that does not exist.
    [[nodiscard]] int PlaceOf(int row) const {
        const auto found = std::ranges::find(m_order, row);
        return found == m_order.end() ? -1 : static_cast<int>(found - m_order.begin());
    }

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : m_rows.count;
    }

    int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
    }

    QVariant data(const QModelIndex& index, int role) const override {
        if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
            return {};
        }
        if (role == Qt::DisplayRole && m_rows.text) {
            return m_rows.text(RowAt(index.row()), index.column());
        }
        if (role == Qt::DecorationRole && index.column() == 0 && m_rows.icon) {
            return m_rows.icon(RowAt(index.row()));
        }
        if (role == kHeadingRole && m_rows.heading) {
            return m_rows.heading(RowAt(index.row()));
        }
        return role == Qt::TextAlignmentRole ? Alignment(index.column()) : QVariant();
    }

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) {
            return {};
        }
        if (role == Qt::TextAlignmentRole) {
            return Alignment(section);
        }
        return role == Qt::DisplayRole ? m_columns[section].title : QVariant();
    }

    /// Column -1 restores the owner's order.
    void sort(int column, Qt::SortOrder order) override {
        emit layoutAboutToBeChanged();
        const QModelIndexList before = persistentIndexList();
        QModelIndexList after;
        const std::vector<int> oldOrder = m_order;
        Order(column, order);
        std::vector<int> places(m_order.size());
        for (int place = 0; place < std::ssize(m_order); ++place) {
            places[m_order[place]] = place;
        }
        for (const QModelIndex& index : before) {
            after.append(createIndex(places[oldOrder[index.row()]], index.column()));
        }
        changePersistentIndexList(before, after);
        emit layoutChanged();
    }

  private:
    [[nodiscard]] QVariant Alignment(int column) const {
        const bool isNumber = m_columns[column].kind == CReportColumn::EKind::Number;
        return QVariant::fromValue(Qt::AlignVCenter | (isNumber ? Qt::AlignRight : Qt::AlignLeft));
    }

    void Order(int column, Qt::SortOrder order) {
        m_order.resize(m_rows.count);
        std::iota(m_order.begin(), m_order.end(), 0);
        if (column < 0 || column >= columnCount() || !CanSort()) {
            return;
        }
        std::vector<QVariant> keys;
        keys.reserve(m_order.size());
        for (const int row : m_order) {
            keys.push_back(m_rows.sortKey(row, column));
        }
        std::ranges::stable_sort(m_order, [&](int a, int b) {
            return order == Qt::AscendingOrder ? IsLess(keys[a], keys[b])
                                               : IsLess(keys[b], keys[a]);
        });
    }

    static bool IsLess(const QVariant& a, const QVariant& b) {
        return a.userType() == QMetaType::QString
                   ? a.toString().compare(b.toString(), Qt::CaseInsensitive) < 0
                   : a.toDouble() < b.toDouble();
    }

    std::vector<CReportColumn> m_columns;
    CReportRows m_rows;
    std::vector<int> m_order;  ///< row by place
};

CReportList::CReportList(const QString& accessibleName, QWidget* parent)
    : CRowTree(parent), m_model(new CModel(this)) {
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
        m_hint->setVisible(RowCount() == 0);
    }
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

void CReportList::SelectRange(int row, int count) {
    SelectRow(row + count - 1);
    for (int more = row; more < row + count - 1; ++more) {
        selectionModel()->select(m_model->index(m_model->PlaceOf(more), 0),
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

void CReportList::LayColumnsOut() {
    int left = viewport()->width();
    int shares = 0;
    for (int column = 0; column < std::ssize(m_columns); ++column) {
        const CReportColumn& wanted = m_columns[column];
        left -= wanted.width > 0 ? wanted.width : LeastWidth(column);
        shares += wanted.width > 0 ? 0 : wanted.share;
    }
    left = std::max(0, left);
    m_laysOut = true;
    for (int column = 0; column < std::ssize(m_columns); ++column) {
        const CReportColumn& wanted = m_columns[column];
        int width = wanted.width;
        if (width == 0) {
            const int part = shares > 0 ? left * wanted.share / shares : 0;
            left -= part;
            shares -= wanted.share;
            width = LeastWidth(column) + part;
        }
        setColumnWidth(column, width);
    }
    m_laysOut = false;
}

void CReportList::SetEmptyHint(const QString& text) {
    if (m_hint == nullptr) {
        m_hint = new QLabel(viewport());
        m_hint->setObjectName(QStringLiteral("emptyHint"));
        m_hint->setAttribute(Qt::WA_TransparentForMouseEvents);
        m_hint->setForegroundRole(QPalette::Text);
        m_hint->setAlignment(Qt::AlignCenter);
        m_hint->setWordWrap(true);
        m_hint->setMargin(kHintMargin);
        auto* over = new QVBoxLayout(viewport());
        over->setSizeConstraint(QLayout::SetNoConstraint);
        over->setContentsMargins(0, 0, 0, 0);
        over->addWidget(m_hint, 1);
    }
    m_hint->setText(text);
    m_hint->setVisible(RowCount() == 0);
}

void CReportList::SetEmptyOffers(const QStringList& offers) {
    for (QToolButton* button : std::exchange(m_offers, {})) {
        button->deleteLater();  // it may have been clicked
        button->hide();
    }
    auto* over = static_cast<QVBoxLayout*>(viewport()->layout());
    for (const QString& offer : offers) {
        const auto index = static_cast<int>(m_offers.size());
        auto* button = new QToolButton(viewport());
        button->setObjectName(QStringLiteral("offer%1").arg(index + 1));
        button->setText(QStringLiteral("%1  %2").arg(index + 1).arg(offer));
        button->setAccessibleName(offer);
        button->setFocusPolicy(Qt::NoFocus);
        button->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
        connect(button, &QToolButton::clicked, this, [this, index] { emit OfferTaken(index); });
        over->addWidget(button, 0, Qt::AlignHCenter);
        m_offers.push_back(button);
    }
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
    if (RowCount() == 0 && isPlain && offer >= 0 && offer < std::ssize(m_offers)) {
        emit OfferTaken(offer);
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

#include "controls/Grid.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QResizeEvent>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QStyledItemDelegate>

#include "controls/Colors.h"
#include "controls/InPlaceControl.h"
#include "controls/InputPanel.h"
#include "controls/NumberField.h"

namespace {

/// A column below its editor's width opens none.
constexpr int kMinimumEditColumn = 5;
constexpr int kMinimumListColumn = 15;
/// A dragged column stays wide enough to be found again.
constexpr int kMinimumColumn = 4;
constexpr int kCheckColumnWidth = 230;
constexpr int kNameColumnMinimum = 100;
constexpr int kNarrowNameColumn = 60;  // beside more than one column of values
/// The columns after it are there to be read, in grey.
constexpr int kLastEditedColumn = 1;
/// Room for an editor's frame around the text.
constexpr int kRowPadding = 8;

class CGridDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        const QSize size = QStyledItemDelegate::sizeHint(option, index);
        return size.expandedTo({0, option.fontMetrics.height() + kRowPadding});
    }

    // The editor leaves a part of its cell in sight.
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        if (!static_cast<const CGrid*>(parent())->IsEdited(index)) {
            QStyledItemDelegate::paint(painter, option, index);
        }
    }

  protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        if (index.column() > kLastEditedColumn) {
            QPalette& colors = option->palette;
            colors.setColor(QPalette::Text, FaintTextColor(colors.color(QPalette::Text),
                                                           colors.color(QPalette::Base)));
        }
    }
};

}  // namespace

CGrid::CGrid(EGridKind kind, const QStringList& columnTitles, const QString& accessibleName,
             QWidget* parent)
    : QTreeView(parent), m_kind(kind), m_model(new QStandardItemModel(this)) {
    m_model->setHorizontalHeaderLabels(columnTitles);
    setModel(m_model);
    setItemDelegate(new CGridDelegate(this));
    setAccessibleName(accessibleName);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectRows);
    setHorizontalScrollMode(ScrollPerPixel);
    header()->setMinimumSectionSize(kMinimumColumn);
    header()->setStretchLastSection(false);
    header()->setSectionsMovable(false);
    if (kind == EGridKind::Checks) {
        setColumnWidth(0, kCheckColumnWidth);
    } else {
        for (int column = 1; column < m_model->columnCount(); ++column) {
            m_model->horizontalHeaderItem(column)->setTextAlignment(Qt::AlignRight |
                                                                    Qt::AlignVCenter);
            setColumnWidth(column, ValueWidth(column));
        }
    }
    connect(this, &QTreeView::pressed, this,
            [this](const QModelIndex& index) { m_checkedAtPress = IsChecked(index.row()); });
    connect(this, &QTreeView::clicked, this, [this](const QModelIndex& index) {
        // A click that toggled the check box is used up.
        if (IsChecked(index.row()) == m_checkedAtPress) {
            OpenCell(index.row(), index.column());
        }
    });
    connect(header(), &QHeaderView::sectionResized, this, [this] {
        if (m_control != nullptr) {
            m_control->Place(CellRect(m_editedCell.row(), m_editedCell.column()));
        }
    });
}

void CGrid::SetRowCount(int rows) {
    CancelEditing();
    const int oldCount = m_model->rowCount();
    m_model->setRowCount(rows);
    for (int row = oldCount; row < rows; ++row) {
        for (int column = 0; column < m_model->columnCount(); ++column) {
            auto* item = new QStandardItem;
            item->setEditable(false);
            item->setCheckable(m_kind == EGridKind::Checks);
            item->setTextAlignment(column == 0 ? Qt::AlignLeft | Qt::AlignVCenter
                                               : Qt::AlignRight | Qt::AlignVCenter);
            m_model->setItem(row, column, item);
            SetCellText(row, column, {});
        }
    }
}

int CGrid::RowCount() const {
    return m_model->rowCount();
}

QString CGrid::CellText(int row, int column) const {
    const QStandardItem* item = m_model->item(row, column);
    return item == nullptr ? QString() : item->text();
}

void CGrid::SetCellText(int row, int column, const QString& text) {
    if (QStandardItem* item = m_model->item(row, column)) {
        item->setText(text);
        ShowRowName(row);
    }
}

// A screen reader would say nothing of a row without a name.
void CGrid::ShowRowName(int row) {
    bool isEmpty = true;
    for (int column = 0; column < m_model->columnCount(); ++column) {
        isEmpty = isEmpty && CellText(row, column).isEmpty();
    }
    QString name;
    if (CellText(row, 0).isEmpty()) {
        name = isEmpty ? QStringLiteral("Empty row") : QStringLiteral("No name");
    }
    m_model->item(row, 0)->setAccessibleText(name);
}

void CGrid::SetColumnShown(int column, bool isShown) {
    const bool isFitted = AreNamesFitted(viewport()->width());
    setColumnHidden(column, !isShown);
    if (isFitted) {
        FitNames();
    }
}

bool CGrid::IsChecked(int row) const {
    const QStandardItem* item = m_model->item(row, 0);
    return item != nullptr && item->checkState() == Qt::Checked;
}

void CGrid::SetChecked(int row, bool checked) {
    if (QStandardItem* item = m_model->item(row, 0)) {
        item->setCheckState(checked ? Qt::Checked : Qt::Unchecked);
    }
}

bool CGrid::OpenCell(int row, int column) {
    return Open(row, column, std::nullopt);
}

bool CGrid::EndEditing() {
    if (m_control == nullptr) {
        return false;
    }
    m_control->Commit();
    return true;
}

void CGrid::CancelEditing() {
    if (m_control != nullptr) {
        m_control->Cancel();
    }
}

QSize CGrid::sizeHint() const {
    int titles = header()->sectionSizeHint(0);
    for (int column = 1; column < m_model->columnCount(); ++column) {
        titles += isColumnHidden(column) ? 0 : ValueWidth(column);
    }
    return SizeForRows(8).expandedTo({titles, 0});
}

QSize CGrid::minimumSizeHint() const {
    return SizeForRows(4);
}

void CGrid::keyPressEvent(QKeyEvent* event) {
    const QModelIndex current = currentIndex();
    const bool plain =
        (event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == Qt::NoModifier;
    if (!current.isValid() || !plain) {
        QTreeView::keyPressEvent(event);
        return;
    }
    const int key = event->key();
    if (key == Qt::Key_Left || key == Qt::Key_Right) {
        const QModelIndex next =
            current.siblingAtColumn(current.column() + (key == Qt::Key_Left ? -1 : 1));
        if (next.isValid() && !isColumnHidden(next.column())) {
            setCurrentIndex(next);
            return;
        }
    } else if (key == Qt::Key_F2 || key == Qt::Key_Return || key == Qt::Key_Enter) {
        // Where nothing opens, Return is the dialog's.
        event->setAccepted(OpenCurrent(std::nullopt));
        return;
    } else if (key == Qt::Key_Space && m_kind == EGridKind::Checks) {
        SetChecked(current.row(), !IsChecked(current.row()));
        return;
    } else if (!event->text().isEmpty() && event->text().front().isPrint() &&
               OpenCurrent(event->text())) {
        return;
    }
    QTreeView::keyPressEvent(event);
}

void CGrid::resizeEvent(QResizeEvent* event) {
    QTreeView::resizeEvent(event);
    if (AreNamesFitted(event->oldSize().width())) {
        FitNames();
    }
    if (m_control != nullptr) {
        ScrollToCell(m_editedCell.row(), m_editedCell.column());
        m_control->Place(CellRect(m_editedCell.row(), m_editedCell.column()));
    }
}

// The names take what the values leave, until the user drags the columns apart.
bool CGrid::AreNamesFitted(int width) const {
    return m_kind != EGridKind::Checks &&
           (width <= 0 || header()->length() == width || columnWidth(0) == kNameColumnMinimum ||
            columnWidth(0) == kNarrowNameColumn);
}

void CGrid::FitNames() {
    const auto room = [this] {
        return viewport()->width() - (header()->length() - columnWidth(0));
    };
    const int columns = m_model->columnCount();
    if (columns <= kLastEditedColumn + 1) {
        setColumnWidth(0, std::max(room(), kNameColumnMinimum));
        return;
    }
    for (int column = 1; column < columns; ++column) {
        setColumnWidth(column, ValueWidth(column));
    }
    // Where there is no room for that, the values are as wide as their texts.
    for (int column = 1; column < columns && room() < kNameColumnMinimum; ++column) {
        setColumnWidth(column, std::min(columnWidth(column), TextsWidth(column)));
    }
    setColumnWidth(0, std::max(room(), kNarrowNameColumn));
}

// A short title must not clip the values under it.
int CGrid::ValueWidth(int column) const {
    return std::max(
        header()->sectionSizeHint(column),
        fontMetrics().horizontalAdvance(QStringLiteral("99999.99")) + fontMetrics().height());
}

int CGrid::TextsWidth(int column) const {
    int width = header()->sectionSizeHint(column);
    for (int row = 0; row < RowCount(); ++row) {
        width = std::max(width, sizeHintForIndex(m_model->index(row, column)).width());
    }
    return width;
}

bool CGrid::HasEditor(int row, int column) const {
    if (!m_model->hasIndex(row, column)) {
        return false;
    }
    switch (m_kind) {
        case EGridKind::Values:
            return column == 1 && columnWidth(1) >= kMinimumEditColumn;
        case EGridKind::Choices:
            return column == 0 ? columnWidth(0) >= kMinimumListColumn
                               : columnWidth(1) >= kMinimumEditColumn && RowCount() > 1;
        case EGridKind::Checks:
            return columnWidth(0) >= kMinimumEditColumn;
    }
    return false;
}

bool CGrid::Open(int row, int column, const std::optional<QString>& initial) {
    EndEditing();
    if (!m_model->hasIndex(row, column)) {
        return false;
    }
    ScrollToCell(row, column);
    const QModelIndex index = m_model->index(row, column);
    const bool opens = HasEditor(row, column);
    if (opens) {
        RaiseInputPanel();
    }
    setCurrentIndex(index);
    setFocus();
    if (!opens) {
        return false;
    }

    m_editedCell = index;
    const QString text = CellText(row, column);
    QLineEdit* edit = CreateEditor(index, initial.value_or(text));
    if (const auto limit = m_maxLengths.constFind(column); limit != m_maxLengths.constEnd()) {
        edit->setMaxLength(std::max<int>(*limit, static_cast<int>(text.size())));
    }
    if (initial) {
        edit->end(false);
    }
    return true;
}

// What is edited: "Protein, Value", or "Serving" for the name itself.
QString CGrid::EditorName(const QModelIndex& index) const {
    const QString column = m_model->headerData(index.column(), Qt::Horizontal).toString();
    const QString row = index.column() > 0 ? CellText(index.row(), 0) : QString();
    return row.isEmpty() ? column : row + QStringLiteral(", ") + column;
}

QLineEdit* CGrid::CreateEditor(const QModelIndex& index, const QString& text) {
    CInPlaceCell cell;
    cell.list = this;
    cell.row = index.row();
    cell.column = index.column();
    cell.rect = CellRect(cell.row, cell.column);
    cell.alignment = m_model->itemFromIndex(index)->textAlignment() & Qt::AlignHorizontal_Mask;
    cell.ended = [this](int row, int column, const std::optional<QString>& endedText) {
        m_control = nullptr;
        update(m_model->index(row, column));
        emit LabelEditEnded(row, column, endedText);
    };
    cell.tabbed = [this](int row, int column, bool forward) { OpenNext(row, column, forward); };
    if (m_kind == EGridKind::Choices && cell.column == 0) {
        auto* box =
            new CInPlaceList(cell, m_choices, static_cast<int>(m_choices.indexOf(text)), text);
        box->setAccessibleName(EditorName(index));
        box->lineEdit()->setAccessibleName(EditorName(index));
        m_control = box;
        return box->lineEdit();
    }
    auto* box = new CInPlaceCellEdit(cell, text, cell.column > 0 ? ETyped::Number : ETyped::Text);
    box->setAccessibleName(EditorName(index));
    m_control = box;
    return box;
}

bool CGrid::OpenCurrent(const std::optional<QString>& initial) {
    const int row = currentIndex().row();
    int column = currentIndex().column();
    for (int other = 0; other < m_model->columnCount() && !HasEditor(row, column); ++other) {
        column = other;
    }
    const bool isRefused = column > 0 && initial && HasLetter(*initial);
    return HasEditor(row, column) && !isRefused && Open(row, column, initial);
}

void CGrid::OpenNext(int row, int column, bool forward) {
    if (IsEditing()) {
        return;
    }
    const int columns = m_model->columnCount();
    const int step = forward ? 1 : -1;
    for (int cell = row * columns + column + step; cell >= 0 && cell < RowCount() * columns;
         cell += step) {
        if (HasEditor(cell / columns, cell % columns)) {
            OpenCell(cell / columns, cell % columns);
            return;
        }
    }
    focusNextPrevChild(forward);
}

void CGrid::ScrollToCell(int row, int column) {
    QScrollBar* bar = horizontalScrollBar();
    const int position = bar->value();
    scrollTo(m_model->index(row, 0));
    bar->setValue(position);
    const int left = columnViewportPosition(column);
    const int beyond = left + columnWidth(column) - viewport()->width();
    if (left < 0) {
        bar->setValue(position + left);
    } else if (beyond > 0) {
        bar->setValue(position + std::min(left, beyond));
    }
}

QRect CGrid::CellRect(int row, int column) const {
    const QRect rowRect = visualRect(m_model->index(row, column));
    return {columnViewportPosition(column), rowRect.top(), columnWidth(column), rowRect.height()};
}

QSize CGrid::SizeForRows(int rows) const {
    const int rowHeight = fontMetrics().height() + kRowPadding;
    return {2 * kNameColumnMinimum, header()->sizeHint().height() + rows * rowHeight};
}

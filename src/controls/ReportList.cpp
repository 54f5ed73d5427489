#include "controls/ReportList.h"

#include <QAbstractTableModel>
#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMetaMethod>
#include <QRegularExpression>
#include <QScrollBar>
#include <algorithm>
#include <cmath>
#include <utility>

namespace {

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
    // WCAG contrast is (lighter + 0.05) / (darker + 0.05); black and white meet where its square is
    // 1.05 * 0.05.
    const double light = Luminance(background) + 0.05;
    return light * light > 1.05 * 0.05 ? Qt::black : Qt::white;
}

class CReportList::CModel : public QAbstractTableModel {
  public:
    using QAbstractTableModel::QAbstractTableModel;

    void SetTitles(const QStringList& titles) {
        beginResetModel();
        m_titles = titles;
        m_rows = {};
        endResetModel();
    }

    void SetRows(CReportRows rows) {
        beginResetModel();
        m_rows = std::move(rows);
        endResetModel();
    }

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : m_rows.count;
    }

    int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(m_titles.size());
    }

    QVariant data(const QModelIndex& index, int role) const override {
        if (!index.isValid()) {
            return {};
        }
        if (role == Qt::DisplayRole && m_rows.text) {
            return m_rows.text(index.row(), index.column());
        }
        if (role == Qt::DecorationRole && index.column() == 0 && m_rows.icon) {
            return m_rows.icon(index.row());
        }
        return {};
    }

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (orientation != Qt::Horizontal) {
            return {};
        }
        if (role == Qt::TextAlignmentRole) {
            return QVariant::fromValue(Qt::AlignLeft | Qt::AlignVCenter);
        }
        return role == Qt::DisplayRole ? m_titles.value(section) : QVariant();
    }

  private:
    QStringList m_titles;
    CReportRows m_rows;
};

CReportList::CReportList(const QString& accessibleName, QWidget* parent)
    : QTreeView(parent), m_model(new CModel(this)) {
    setModel(m_model);
    setAccessibleName(accessibleName);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setHorizontalScrollMode(ScrollPerPixel);
    setContextMenuPolicy(Qt::CustomContextMenu);
    header()->setSectionsMovable(false);
    header()->setStretchLastSection(false);
}

void CReportList::SetColumns(const QStringList& titles) {
    m_model->SetTitles(titles);
    if (titles.size() == 1) {
        header()->setStretchLastSection(true);  // which then has the whole width
    }
}

void CReportList::SetRows(CReportRows rows) {
    const int position = verticalScrollBar()->value();
    m_model->SetRows(std::move(rows));
    doItemsLayout();
    verticalScrollBar()->setValue(position);
}

int CReportList::RowCount() const {
    return m_model->rowCount();
}

std::vector<int> CReportList::SelectedRows() const {
    std::vector<int> rows;
    for (const QModelIndex& index : selectionModel()->selectedRows()) {
        rows.push_back(index.row());
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

void CReportList::SelectRow(int row) {
    const QModelIndex index = m_model->index(std::min(row, RowCount() - 1), 0);
    if (!index.isValid()) {
        return;
    }
    selectionModel()->setCurrentIndex(
        index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    scrollTo(index);
}

std::vector<int> CReportList::GetColumnWidths() const {
    std::vector<int> widths;
    for (int column = 0; column < m_model->columnCount(); ++column) {
        widths.push_back(columnWidth(column));
    }
    return widths;
}

void CReportList::SetColumnWidths(const std::vector<int>& widths) {
    const int columns = std::min(static_cast<int>(widths.size()), m_model->columnCount());
    for (int column = 0; column < columns; ++column) {
        if (widths[column] > 0) {
            setColumnWidth(column, widths[column]);
        }
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

void CReportList::CopySelectedRows() const {
    static const QRegularExpression separators(QStringLiteral("[\t\r\n]"));
    QStringList lines;
    for (const int row : SelectedRows()) {
        QStringList cells;
        for (int column = 0; column < m_model->columnCount(); ++column) {
            const QString cell = m_model->index(row, column).data().toString();
            cells.append(QString(cell).replace(separators, QStringLiteral(" ")));
        }
        lines.append(cells.join(u'\t'));
    }
    if (!lines.isEmpty()) {
        QGuiApplication::clipboard()->setText(lines.join(u'\n'));
    }
}

void CReportList::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) {
        CopySelectedRows();
        event->accept();
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

#include "controls/ReportModel.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "controls/RowDelegate.h"

namespace {
bool IsLess(const QVariant& a, const QVariant& b) {
    return a.userType() == QMetaType::QString
               ? a.toString().compare(b.toString(), Qt::CaseInsensitive) < 0
               : a.toDouble() < b.toDouble();
}
}  // namespace

void CReportModel::SetColumns(const std::vector<CReportColumn>& columns) {
    beginResetModel();
    m_columns = columns;
    m_rows = {};
    m_order.clear();
    endResetModel();
}

void CReportModel::SetRows(CReportRows rows, int sortColumn, Qt::SortOrder order) {
    beginResetModel();
    m_rows = std::move(rows);
    Order(sortColumn, order);
    endResetModel();
}

int CReportModel::PlaceOf(int row) const {
    const auto found = std::ranges::find(m_order, row);
    return found == m_order.end() ? -1 : static_cast<int>(found - m_order.begin());
}

int CReportModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_rows.count;
}

int CReportModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

QVariant CReportModel::data(const QModelIndex& index, int role) const {
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
    if (role == Qt::AccessibleDescriptionRole && index.column() == 0 && m_rows.iconText) {
        return m_rows.iconText(RowAt(index.row()));
    }
    // The heading is painted above the row and is no row itself.
    if (role == Qt::AccessibleTextRole && index.column() == 0 && !HeadingOf(index).isEmpty()) {
        return QString(HeadingOf(index) + QStringLiteral(": ") + index.data().toString());
    }
    return role == Qt::TextAlignmentRole ? Alignment(index.column()) : QVariant();
}

QVariant CReportModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) {
        return {};
    }
    if (role == Qt::TextAlignmentRole) {
        return Alignment(section);
    }
    return role == Qt::DisplayRole ? m_columns[section].title : QVariant();
}

void CReportModel::sort(int column, Qt::SortOrder order) {
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

QVariant CReportModel::Alignment(int column) const {
    const bool isNumber = m_columns[column].kind == CReportColumn::EKind::Number;
    return QVariant::fromValue(Qt::AlignVCenter | (isNumber ? Qt::AlignRight : Qt::AlignLeft));
}

void CReportModel::Order(int column, Qt::SortOrder order) {
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
        return order == Qt::AscendingOrder ? IsLess(keys[a], keys[b]) : IsLess(keys[b], keys[a]);
    });
}

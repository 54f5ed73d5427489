// The rows and columns of a report-style list, and the order in which they are shown.
#pragma once

#include <QAbstractTableModel>
#include <QIcon>
#include <functional>
#include <vector>

/// One column. Columns without a fixed width share the room that the others leave.
struct CReportColumn {
    enum class EKind { Text, Number };  ///< numbers are right-aligned, with their title

    QString title;
    EKind kind = EKind::Text;
    int width = 0;    ///< fixed width in logical pixels; 0: the list chooses
    int least = 0;    ///< least width that the list chooses, in logical pixels; 0: the title's
    int content = 0;  ///< width of the texts: a column that would be narrower gets it, up to half
                      ///< of the list
    int share = 1;    ///< weight when the remaining room is shared; 0: gets none of it
};

/// The rows of a list. The functions are called when a cell is painted, with rows in the owner's
/// order.
struct CReportRows {
    int count = 0;
    std::function<QString(int row, int column)> text;
    std::function<QIcon(int row)> icon = {};        ///< in column 0; may be empty
    std::function<QString(int row)> iconText = {};  ///< what the icon says, for a screen reader
    /// The key by which a click on a header sorts: a number, or a text compared without case. A
    /// list without this function cannot be sorted.
    std::function<QVariant(int row, int column)> sortKey = {};
    /// A faint line with this text above the row; none where it is empty. Not with `sortKey`.
    std::function<QString(int row)> heading = {};
};

/// A "row" counts in the owner's order, a "place" in the order shown.
class CReportModel : public QAbstractTableModel {
  public:
    using QAbstractTableModel::QAbstractTableModel;

    /// Removes the rows.
    void SetColumns(const std::vector<CReportColumn>& columns);
    void SetRows(CReportRows rows, int sortColumn, Qt::SortOrder order);

    [[nodiscard]] bool CanSort() const { return m_rows.sortKey != nullptr; }
    [[nodiscard]] int RowAt(int place) const { return m_order[place]; }
    /// -1 for a row that does not exist.
    [[nodiscard]] int PlaceOf(int row) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;
    /// Column -1 restores the owner's order.
    void sort(int column, Qt::SortOrder order) override;

  private:
    [[nodiscard]] QVariant Alignment(int column) const;
    void Order(int column, Qt::SortOrder order);

    std::vector<CReportColumn> m_columns;
    CReportRows m_rows;
    std::vector<int> m_order;  ///< row by place
};

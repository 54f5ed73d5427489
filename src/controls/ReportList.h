// The report-style list of the views: rows and columns of texts over a model, multi-selection,
// reselection after a reload, sorting by a click on a header or a key.
#pragma once

#include <vector>

#include "controls/ReportModel.h"
#include "controls/RowTree.h"

class CEmptyListHint;

/// Added to the width of a column's title, in logical pixels.
inline constexpr int kTitleMargin = 16;

/// A flat list; any number of rows. Return or a double click activates a row
/// (QAbstractItemView::activated); the context menu policy is custom. The copy key puts the
/// selected rows on the clipboard as they are shown: one line per row, tabs between the columns. On
/// a wide screen rows are one and a half times as high as the font.
///
/// A click on a header sorts, a second one reverses the order, a third restores the owner's order;
/// so do Alt+1 to Alt+9 for the first nine columns.
/// A "row" counts in the owner's order, a "place" in the order shown.
class CReportList : public CRowTree {
    Q_OBJECT
  public:
    explicit CReportList(const QString& accessibleName, QWidget* parent = nullptr);

    /// Removes the rows, and resets the sorting unless the titles stay the same.
    void SetColumns(std::vector<CReportColumn> columns);
    /// One column over the whole width.
    void SetColumn(const QString& title) { SetColumns({{.title = title}}); }
    /// Replaces the rows and clears selection and current row; the scroll position stays where
    /// possible.
    void SetRows(CReportRows rows);
    [[nodiscard]] int RowCount() const;

    /// In the order shown.
    [[nodiscard]] std::vector<int> SelectedRows() const;
    /// Place of the first selected row; -1 when none is selected.
    [[nodiscard]] int FirstSelectedPlace() const;
    /// Place of the row that has the focus; -1 for none.
    [[nodiscard]] int CurrentPlace() const { return currentIndex().row(); }
    /// Selects only this row, makes it current and scrolls it into view. Does nothing for a row
    /// that does not exist.
    void SelectRow(int row);
    /// Selects these rows and makes the last one current; does nothing for none.
    void SelectSeveral(const std::vector<int>& rows);
    /// SelectRow by its place; the last one when the list has become shorter.
    void SelectPlace(int place);
    /// Scrolls a row into view without selecting it.
    void ScrollToRow(int row);

    /// Logical pixels, one per column.
    [[nodiscard]] std::vector<int> GetColumnWidths() const;
    /// Fixes the columns' widths; 0 leaves a column as it is.
    void SetColumnWidths(const std::vector<int>& widths);
    /// Changes CReportColumn::content: the cells of the column need so many logical pixels.
    void SetContentWidth(int column, int width);
    /// The text shown in the list while it is empty.
    void SetEmptyHint(const QString& text);
    /// Buttons in the list while it is empty, for what it could be filled with; the keys 1, 2, ...
    /// press them. Call after SetEmptyHint.
    void SetEmptyOffers(const QStringList& offers);
    /// The selected rows as the copy key copies them.
    [[nodiscard]] QString SelectedText() const;
    /// Background of the rows; an invalid colour is the palette's. The text stays readable on it.
    void SetBackgroundColor(const QColor& color);

  signals:
    /// The user dragged a column to `width` logical pixels.
    void ColumnDragged(int column, int width);
    /// Index of an offer of the empty list.
    void OfferTaken(int offer);

  protected:
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                 const QModelIndex& index) const override;
    /// Selects the current row when the Tab key comes to the list and no row is selected.
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    /// False when the list cannot be sorted by such a column.
    bool SortBy(int column);
    void LayColumnsOut();
    /// The widths when the room is shared among columns that are at least so wide.
    [[nodiscard]] std::vector<int> SharedWidths(const std::vector<int>& least) const;
    void SelectIndex(const QModelIndex& index);
    [[nodiscard]] int LeastWidth(int column) const;

    CReportModel* m_model;
    CEmptyListHint* m_hint = nullptr;  ///< created by SetEmptyHint
    std::vector<CReportColumn> m_columns;
    bool m_laysOut = false;  ///< the list itself is changing widths
};

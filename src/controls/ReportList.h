// The report-style list of the views: rows and columns of texts over a model, multi-selection,
// reselection after a reload, sorting by a click on a header.
#pragma once

#include <QIcon>
#include <QTreeView>
#include <functional>
#include <vector>

class QLabel;

/// Room beside the title of a column, in pixels.
inline constexpr int kTitleMargin = 16;

/// One column. A column without a width of its own shares what the others leave of the list.
struct CReportColumn {
    enum class EKind { Text, Number };  ///< numbers stand right-aligned under their title

    QString title;
    EKind kind = EKind::Text;
    int width = 0;  ///< logical pixels, set by a person or a rule; 0: the list chooses
    int least = 0;  ///< logical pixels where the list chooses; 0: the title's
    int share = 1;  ///< weight when what is left is shared; 0: none of it
};

/// What a list shows, asked cell by cell when it is painted. Rows count in the owner's order.
struct CReportRows {
    int count = 0;
    std::function<QString(int row, int column)> text;
    std::function<QIcon(int row)> icon = {};  ///< may be empty; stands in column 0
    /// What a click on a header sorts by, a number or a text compared without case; a list without
    /// it cannot be sorted.
    std::function<QVariant(int row, int column)> sortKey = {};
};

/// Black or white, whichever contrasts more with the background.
QColor ReadableTextColor(const QColor& background);

/// A flat list; any number of rows. Return or a double click activates a row
/// (QAbstractItemView::activated); the context menu policy is custom. The copy key puts the
/// selected rows on the clipboard as they are shown: a line a row, tabs between the columns. On a
/// wide screen rows are one and a half times as high as the font.
///
/// A click on a header sorts, a second one the other way, a third gives the owner's order back.
/// "Row" counts in the owner's order, "place" in the order shown.
class CReportList : public QTreeView {
    Q_OBJECT
  public:
    explicit CReportList(const QString& accessibleName, QWidget* parent = nullptr);

    /// Drops the rows, and the sorting unless the titles stay the same.
    void SetColumns(std::vector<CReportColumn> columns);
    /// One column over the whole width.
    void SetColumn(const QString& title) { SetColumns({{.title = title}}); }
    /// Replaces the rows; selection and current row are gone afterwards, the scroll position
    /// stays where the rows allow it.
    void SetRows(CReportRows rows);
    [[nodiscard]] int RowCount() const;

    /// In the order shown.
    [[nodiscard]] std::vector<int> SelectedRows() const;
    /// Place of the first selected row; -1 when none is selected.
    [[nodiscard]] int FirstSelectedPlace() const;
    /// Place of the row that has the focus; -1 for none.
    [[nodiscard]] int CurrentPlace() const { return currentIndex().row(); }
    /// Selects one row alone, makes it current and scrolls it into view. Nothing for a row that
    /// does not exist.
    void SelectRow(int row);
    /// The same by its place; the last one when the list has become shorter.
    void SelectPlace(int place);
    /// Scrolls a row into view without selecting it.
    void ScrollToRow(int row);

    /// Logical pixels, one a column.
    [[nodiscard]] std::vector<int> GetColumnWidths() const;
    /// Sets widths that columns then keep; 0 leaves a column as it is.
    void SetColumnWidths(const std::vector<int>& widths);
    /// The words that stand in the list while it is empty.
    void SetEmptyHint(const QString& text);
    /// Background of the rows; an invalid colour is the palette's. The text stays readable on it.
    void SetBackgroundColor(const QColor& color);

  signals:
    /// A person has given a column its width.
    void ColumnDragged(int column, int width);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void CopySelectedRows() const;

    class CModel;

    void LayColumnsOut();
    void SelectIndex(const QModelIndex& index);
    [[nodiscard]] int LeastWidth(int column) const;

    CModel* m_model;
    QLabel* m_hint = nullptr;  ///< made by SetEmptyHint
    std::vector<CReportColumn> m_columns;
    bool m_laysOut = false;  ///< widths change by the list's own hand
};

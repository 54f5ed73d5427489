// The report-style list of the views: rows and columns of texts over a model, multi-selection,
// reselection after a reload.
#pragma once

#include <QIcon>
#include <QTreeView>
#include <functional>
#include <vector>

/// What a list shows, asked cell by cell when it is painted.
struct CReportRows {
    int count = 0;
    std::function<QString(int row, int column)> text;
    std::function<QIcon(int row)> icon;  ///< may be empty; stands in column 0
};

/// Black or white, whichever contrasts more with the background.
QColor ReadableTextColor(const QColor& background);

/// Rows are flat and as many as one likes. Return or a double click activates a row
/// (QAbstractItemView::activated); the context menu policy is custom. The copy key puts the
/// selected rows on the clipboard as they are shown: a line a row, tabs between the columns.
class CReportList : public QTreeView {
    Q_OBJECT
  public:
    explicit CReportList(const QString& accessibleName, QWidget* parent = nullptr);

    /// Drops the rows.
    void SetColumns(const QStringList& titles);
    /// Replaces the rows; selection and current row are gone afterwards, the scroll position
    /// stays where the rows allow it.
    void SetRows(CReportRows rows);
    [[nodiscard]] int RowCount() const;

    /// Ascending.
    [[nodiscard]] std::vector<int> SelectedRows() const;
    /// Selects one row, or the last one when the list has become shorter, makes it current and
    /// scrolls it into view. Nothing in an empty list.
    void SelectRow(int row);

    /// Logical pixels, one a column.
    [[nodiscard]] std::vector<int> GetColumnWidths() const;
    /// Widths of 0 leave their column as it is.
    void SetColumnWidths(const std::vector<int>& widths);
    /// Background of the rows; an invalid colour is the palette's. The text stays readable on it.
    void SetBackgroundColor(const QColor& color);

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void CopySelectedRows() const;

    class CModel;
    CModel* m_model;
};

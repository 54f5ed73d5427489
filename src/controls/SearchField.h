// A field that searches while a text is typed, and the list of matches that covers the lower part
// of a dialog.
#pragma once

#include <QLineEdit>
#include <QStringList>
#include <functional>
#include <vector>

#include "controls/ReportList.h"

class CListPane;
class QTimer;

/// What a search shows. `note` is the line under the rows, `hint` the text instead of them. A
/// pending search is called again when the window has nothing else to do.
struct CSearchRows {
    int count = 0;
    std::function<QString(int row, int column)> text;
    QString note = {};
    QString hint = {};
    bool isPending = false;
};

/// The field keeps the focus while the list is open. The list opens with the first key and with
/// Down, and covers its parent below the field. Up, Down, Page Up and Page Down move in it; Return
/// or a click picks, Escape (through the dialog) and leaving the field close it. Return waits for a
/// pending search.
class CSearchField : public QLineEdit {
    Q_OBJECT
  public:
    using Search = std::function<CSearchRows(const QString& text)>;

    /// `over` is CDialog::OverlayParent; `columns` are those of the list.
    CSearchField(std::vector<CReportColumn> columns, Search search, QWidget* over, QWidget* parent);

    [[nodiscard]] bool IsOpen() const;
    void Close();

  signals:
    /// The field is empty and the list closed when this is emitted.
    void Picked(int row);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void ShowMatches();
    void Continue();
    void Move(int rows);
    void Pick(int row);
    void Place();

    Search m_search;
    QWidget* m_overlay;
    CReportList* m_list;
    CListPane* m_pane;
    QTimer* m_pending;
    bool m_picksFirst = false;  ///< Return was pressed while the search was pending
};

// A line edit with a list that covers the lower part of another widget.
#pragma once

#include <QLineEdit>
#include <functional>
#include <vector>

#include "controls/ReportList.h"

class CListPane;
class QTimer;
class QVBoxLayout;

/// What the list shows. `note` is the line under the rows, `hint` the text instead of them. Pending
/// rows are asked for again when the window has nothing else to do.
struct CSearchRows {
    int count = 0;
    std::function<QString(int row, int column)> text = {};
    QString note = {};
    QString hint = {};
    bool isPending = false;
};

/// The field keeps the focus while the list is open. The list opens with the first key and with
/// Down; Up, Down, Page Up and Page Down move in it. Leaving the field closes it. Return waits for
/// pending rows.
class COverlayField : public QLineEdit {
    Q_OBJECT
  public:
    [[nodiscard]] bool IsOpen() const;
    void Close();
    /// Calls `some` whenever there is nothing else to do, until it returns false: work for which
    /// the first key would otherwise wait.
    void PrepareWhileIdle(std::function<bool()> some);

  protected:
    /// `over` is covered below the field; `name` is the field's object name.
    COverlayField(const QString& name, std::vector<CReportColumn> columns, QWidget* over,
                  QWidget* parent);

    /// Fills the list and shows it.
    void Open();
    void SetRows(const CSearchRows& rows);
    [[nodiscard]] bool IsPending() const;
    CReportList* List() { return m_list; }
    /// What is covered; the list is the last part.
    QVBoxLayout* Overlay() { return m_layout; }

    /// Must call SetRows.
    virtual void Fill() = 0;
    /// The user chose a row with the keys.
    virtual void RowChosen(int row) { Q_UNUSED(row) }
    /// The user clicked on a row, or pressed Return on the open list; -1 when none is current.
    virtual void Pick(int row) = 0;
    /// Return was pressed on the open list, whose rows are no longer pending.
    virtual void TakeReturn() { Pick(m_list->CurrentPlace()); }
    /// Lays out the parts above the list. Returns the height of the overlay, at most `room`; both
    /// in logical pixels.
    [[nodiscard]] virtual int LayOutParts(int room) { return room; }

    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Continue();
    void Move(int rows);
    void Place();

    QWidget* m_overlay;
    QVBoxLayout* m_layout;
    CReportList* m_list;
    CListPane* m_pane;
    std::function<bool()> m_prepare;
    QTimer* m_pending;
    bool m_hasReturn = false;  ///< Return was pressed while the rows were pending
};

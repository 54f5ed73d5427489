// The tree view under every list and tree of the windows.
#pragma once

#include <QTreeView>

/// Shows a pale selection while neither it nor its focus proxy has the focus, so that of several
/// panes the one with the keyboard is seen. A frame shows what is selected where the ground alone
/// is too near to that of the other rows.
class CRowTree : public QTreeView {
    Q_OBJECT
  public:
    using QTreeView::QTreeView;

  protected:
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                 const QModelIndex& index) const override;
    /// Whether a selected row looks different from others.
    [[nodiscard]] virtual bool ShowsSelection() const { return true; }

  private:
    void FrameSelected(QPainter* painter, const QStyleOptionViewItem& option,
                       const QModelIndex& index) const;
};

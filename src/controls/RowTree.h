// The tree view under every list and tree of the windows.
#pragma once

#include <QTreeView>

/// Shows a pale selection while neither it nor its focus proxy has the focus, so that of several
/// panes the one with the keyboard is seen.
class CRowTree : public QTreeView {
    Q_OBJECT
  public:
    using QTreeView::QTreeView;

  protected:
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                 const QModelIndex& index) const override;
};

// The interface between the main frame and the view it shows.
#pragma once

#include <QString>
#include <QWidget>
#include <vector>

#include "controls/Silence.h"

class QAction;
class QMenu;

/// One menu of the command bar; a null action is a separator.
struct CCommandMenu {
    QString title;  ///< "File", "Edit", "Tools"
    std::vector<QAction*> actions;
};
/// Appends such actions to a menu.
void AddToMenu(QMenu& menu, const std::vector<QAction*>& actions);

/// A view owns its actions; the frame only shows them. Actions have their shortcut set, and a tool
/// tip if they are also in the tool bar.
class CMainView : public QWidget {
    Q_OBJECT
  public:
    using QWidget::QWidget;
    ~CMainView() override { SilenceChildren(this); }

    /// Menus of the command bar, in order.
    virtual std::vector<CCommandMenu> CommandBar() = 0;
    /// Called before one of the menus is shown: the view brings the texts of its actions up to
    /// date.
    virtual void RefreshMenus() {}
    /// Buttons of the command bar, in order.
    virtual std::vector<QAction*> ToolButtons() { return {}; }
    /// Called before a dialog that may change what the view shows: the view passes the state of its
    /// layout to the document. (Dragged column widths are passed at once.)
    virtual void StoreLayout() {}
    /// Called after such a dialog, and after anything else that changed the stored data: the view
    /// rebuilds its columns, lists and totals.
    virtual void DataChanged() = 0;

  signals:
    /// Asks the frame to run one of its commands.
    void FrameCommand(int command);
};

// What the main frame knows of the view it shows.
#pragma once

#include <QString>
#include <QWidget>
#include <vector>

#include "controls/Silence.h"

class QAction;

/// One menu of the command bar; a null action stands for a separator.
struct CCommandMenu {
    QString title;  ///< "File", "Edit", "Tools"
    std::vector<QAction*> actions;
};

/// A view owns its actions; the frame only shows them. Actions carry their shortcut, and a tool
/// tip where they also stand in the tool bar.
class CMainView : public QWidget {
    Q_OBJECT
  public:
    using QWidget::QWidget;
    ~CMainView() override { SilenceChildren(this); }

    /// Menus of the command bar, in order.
    virtual std::vector<CCommandMenu> CommandBar() = 0;
    /// Buttons of the command bar, in order.
    virtual std::vector<QAction*> ToolButtons() { return {}; }
    /// Before a dialog that may change what the view shows: keep what the document does not have
    /// yet of the view's layout. (Dragged column widths reach it at once.)
    virtual void StoreLayout() {}
    /// After such a dialog, and after anything else that changed the stored data: build columns,
    /// lists and totals anew.
    virtual void DataChanged() = 0;

  signals:
    /// Asks the frame to run one of its commands.
    void FrameCommand(int command);
};

// The commands "Undo", "Redo" and "Clear history..." at the end of a view's menus.
#pragma once

#include <QObject>
#include <functional>
#include <vector>

class QAction;
class QWidget;

/// What the commands act on.
struct CUndoHost {
    std::function<QString()> undoName;  ///< of the step to undo next; empty when there is none
    std::function<QString()> redoName;
    std::function<void()> undo;
    std::function<void()> redo;
    std::function<void()> clear;
};

/// The actions belong to the view. Their keys work in the whole view, except in fields that have an
/// undo of their own.
class CUndoActions : public QObject {
    Q_OBJECT
  public:
    CUndoActions(CUndoHost host, QWidget* view);

    /// A separator (null) and the commands.
    std::vector<QAction*> MenuTail();
    /// Updates the names of the steps: call before a menu is shown.
    void Refresh();

  private:
    QAction* CreateAction(const QString& name, QWidget* view, const std::function<void()>& run);

    CUndoHost m_host;
    QAction* m_undo;
    QAction* m_redo;
    QAction* m_clear;
};

// The menus and the tool bar of the main window.
#pragma once

#include <QObject>
#include <vector>

class CMainView;
class QAction;
class QActionGroup;
class QMainWindow;
class QMenu;
class QToolBar;
class QWidgetAction;

/// The menus hold the commands of the view shown, then Help. The tool bar holds the view's buttons,
/// then one button for each view to switch to, in the same place whatever view is shown.
class CCommandBar : public QObject {
    Q_OBJECT
  public:
    explicit CCommandBar(QMainWindow* window);

    /// Appends a switch button; its shortcut is Ctrl and its number from 1.
    void AddSwitch(int command, const QString& name, const QString& toolTip);
    /// Shows the commands of a view, and its switch button pressed.
    void ShowCommandsOf(CMainView& view, int switchCommand);

  signals:
    /// A switch command or kCommandHelp.
    void CommandChosen(int command);

  private:
    void AddButtons(const std::vector<QAction*>& buttons);

    QMainWindow* m_window;
    QToolBar* m_toolBar;
    QActionGroup* m_switches;
    std::vector<QMenu*> m_menus;  ///< of the view
    QMenu* m_helpMenu;
    QWidgetAction* m_buttonGap;
};

#include "frame/CommandBar.h"

#include <QAction>
#include <QActionGroup>
#include <QLayout>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>
#include <QWidgetAction>

#include "app/FrameCommands.h"
#include "controls/MainView.h"

using namespace Qt::StringLiterals;

namespace {
constexpr QSize kIconSize(20, 20);
/// The largest number of tool buttons of a view.
constexpr int kButtonPlaces = 4;
}  // namespace

CCommandBar::CCommandBar(QMainWindow* window)
    : QObject(window),
      m_window(window),
      m_toolBar(window->addToolBar(u"Commands"_s)),
      m_switches(new QActionGroup(this)),
      m_helpMenu(new QMenu(u"&Help"_s, window)),
      m_buttonGap(new QWidgetAction(this)) {
    m_toolBar->setObjectName(u"commands"_s);
    m_toolBar->setMovable(false);
    m_toolBar->setIconSize(kIconSize);
    m_toolBar->setContextMenuPolicy(Qt::PreventContextMenu);
    if (auto* more = m_toolBar->findChild<QToolButton*>(u"qt_toolbar_ext_button"_s)) {
        more->setAccessibleName(u"More commands"_s);
        more->setToolTip(more->accessibleName());
    }
    m_buttonGap->setDefaultWidget(new QWidget);
    // One for all views: to a screen reader an action that outlives its menu is lost.
    QAction* help = m_helpMenu->addAction(u"Velmora help"_s, this,
                                          [this] { emit CommandChosen(kCommandHelp); });
    help->setShortcut(QKeySequence::HelpContents);
}

void CCommandBar::AddSwitch(int command, const QString& name, const QString& toolTip) {
    QAction* action = m_switches->addAction(name);
    action->setToolTip(toolTip);
    action->setCheckable(true);
    action->setData(command);
    action->setShortcut(Qt::CTRL |
                        static_cast<Qt::Key>(Qt::Key_1 + m_switches->actions().size() - 1));
    m_window->addAction(action);  // so that the shortcut works even if the tool bar has no room
    connect(action, &QAction::triggered, this, [this, command] { emit CommandChosen(command); });
}

void CCommandBar::ShowCommandsOf(CMainView& view, int switchCommand) {
    QMenuBar* menuBar = m_window->menuBar();
    menuBar->clear();
    for (QMenu* menu : m_menus) {
        menu->deleteLater();
    }
    m_menus.clear();
    for (const CCommandMenu& commands : view.CommandBar()) {
        QMenu* menu = menuBar->addMenu(u'&' + commands.title);
        AddToMenu(*menu, commands.actions);
        connect(menu, &QMenu::aboutToShow, &view, &CMainView::RefreshMenus);
        m_menus.push_back(menu);
    }
    menuBar->addMenu(m_helpMenu);

    m_toolBar->clear();
    AddButtons(view.ToolButtons());
    m_toolBar->addSeparator();
    for (QAction* action : m_switches->actions()) {
        action->setChecked(action->data().toInt() == switchCommand);
        m_toolBar->addAction(action);
    }
}

/// Leaves a gap for as many buttons as the view has fewer than others.
void CCommandBar::AddButtons(const std::vector<QAction*>& buttons) {
    m_toolBar->addActions({buttons.begin(), buttons.end()});
    const int missing = kButtonPlaces - static_cast<int>(buttons.size());
    if (missing <= 0 || buttons.empty()) {
        return;
    }
    const int width = m_toolBar->widgetForAction(buttons.front())->sizeHint().width();
    const int spacing = m_toolBar->layout()->spacing();
    m_buttonGap->defaultWidget()->setFixedWidth(missing * width + (missing - 1) * spacing);
    m_toolBar->addAction(m_buttonGap);
}

#include "controls/MainView.h"

#include <QMenu>

void AddToMenu(QMenu& menu, const std::vector<QAction*>& actions) {
    for (QAction* action : actions) {
        if (action == nullptr) {
            menu.addSeparator();
        } else {
            menu.addAction(action);
        }
    }
}

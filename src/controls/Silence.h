// How a window with fields is destroyed.
#pragma once

#include <QObject>

/// For the destructor of a window's base class. A field emits when it loses the focus, also to its
/// own destruction, and whoever receives that in the window is no longer whole.
inline void SilenceChildren(QObject* window) {
    for (QObject* child : window->findChildren<QObject*>()) {
        child->blockSignals(true);
    }
}

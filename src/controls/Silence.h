// How a window with fields is destroyed.
#pragma once

#include <QObject>

/// Call in the destructor of a window's base class. A field that loses the focus while it is
/// destroyed still emits signals, but the derived window that receives them no longer exists.
inline void SilenceChildren(QObject* window) {
    for (QObject* child : window->findChildren<QObject*>()) {
        child->blockSignals(true);
    }
}

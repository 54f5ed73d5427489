#include "controls/OverlayPlace.h"

#include <QAbstractScrollArea>
#include <algorithm>

QWidget* OverlayArea(QWidget* over) {
    const auto* scroll = qobject_cast<const QAbstractScrollArea*>(over);
    return scroll == nullptr ? over : scroll->viewport();
}

QRect OverlayPlace(QWidget* over, const QWidget* above) {
    const QWidget* part = OverlayArea(over);
    const QRect area = part == over ? over->rect() : part->geometry();
    const int below = above == nullptr ? 0 : above->mapTo(over, above->rect().bottomLeft()).y();
    // A list lower than half its parent would be hard to use.
    const int top = std::clamp(below + 1, 0, area.height() / 2);
    return area.adjusted(0, top, 0, 0);
}

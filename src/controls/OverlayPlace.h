// Where a list covers the lower part of a dialog or view.
#pragma once

#include <QRect>

class QWidget;

/// The part of `over` that a list may cover: all of it, or the viewport of a scroll area.
QWidget* OverlayArea(QWidget* over);
/// The list's place in `over`: in that part, below the field `above` but at least the lower
/// half.
QRect OverlayPlace(QWidget* over, const QWidget* above);

#include "frame/WindowPlacement.h"

#include <QGuiApplication>
#include <QScreen>
#include <utility>

namespace {
/// Pixels of the window that must lie on a screen for a stored placement to be taken.
constexpr int kLeastVisible = 40;
constexpr int kNeverSaved = -1;

/// `length` from `start`; cut down to the desktop's and moved into it where it is longer.
std::pair<int, int> SpanWithin(int desktopStart, int desktopLength, int start, int length) {
    return length > desktopLength ? std::pair(desktopStart, desktopLength)
                                  : std::pair(start, length);
}

/// Empty for numbers that no window has: a settings file may hold any.
QRect PlacementWithin(const QRect& desktop, const CRegistrySettings& stored) {
    const auto [x, width] =
        SpanWithin(desktop.x(), desktop.width(), stored.positionX, stored.sizeX);
    const auto [y, height] =
        SpanWithin(desktop.y(), desktop.height(), stored.positionY, stored.sizeY);
    if (width <= 0 || height <= 0 || !desktop.adjusted(-width, -height, 0, 0).contains(x, y)) {
        return {};
    }
    return {x, y, width, height};
}
}  // namespace

QRect VisiblePlacement(const CRegistrySettings& stored) {
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (screen == nullptr || stored.sizeX == kNeverSaved || stored.sizeY == kNeverSaved) {
        return {};
    }
    const QRect placement = PlacementWithin(screen->availableVirtualGeometry(), stored);
    for (const QScreen* candidate : QGuiApplication::screens()) {
        const QRect visible = candidate->availableGeometry().intersected(placement);
        if (visible.width() >= kLeastVisible && visible.height() >= kLeastVisible) {
            return placement;
        }
    }
    return {};
}

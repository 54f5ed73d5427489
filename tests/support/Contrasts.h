// How well something that is drawn can be seen.
#pragma once

#include <QImage>

#include "controls/Colors.h"

/// The strongest contrast of a pixel of the area with the ground.
inline double Strongest(const QImage& image, const QRect& area, const QColor& ground) {
    double strongest = 1;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            strongest = std::max(strongest, Contrast(image.pixelColor(x, y), ground));
        }
    }
    return strongest;
}

/// The strongest contrast of a pixel with the same one of another image as large.
inline double Change(const QImage& before, const QImage& after) {
    double strongest = 1;
    for (int y = 0; y < before.height(); ++y) {
        for (int x = 0; x < before.width(); ++x) {
            const QPoint pixel(x, y);
            strongest =
                std::max(strongest, Contrast(before.pixelColor(pixel), after.pixelColor(pixel)));
        }
    }
    return strongest;
}

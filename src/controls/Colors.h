// Colours that can be read: texts on grounds that the program, the desktop or the user chose.
#pragma once

#include <QColor>
#include <QPalette>

/// The least contrast of a text with its ground (WCAG 2.1, level AA).
inline constexpr double kReadableContrast = 4.5;
/// The least contrast of a sign, or of the outline of a control, with its ground (the same).
inline constexpr double kVisibleContrast = 3;

/// From 1 for equal colours to 21 for black and white, as WCAG 2.1 defines it. Both are opaque.
double Contrast(const QColor& a, const QColor& b);
/// Black or white, whichever contrasts more with the background; always readable.
QColor ReadableTextColor(const QColor& background);
/// `share` of `a` and the rest of `b`.
QColor MixedColor(const QColor& a, const QColor& b, double share);
/// A text colour for what matters less, as near to the ground as can be read; `text` itself when
/// no mix of the two can be read.
QColor FaintTextColor(const QColor& text, const QColor& ground);
/// The colour, moved towards black or white until it has at least `contrast` with the ground, up to
/// kReadableContrast.
QColor ContrastingColor(QColor color, const QColor& ground, double contrast);
/// The palette with a readable selection, readable links and readable placeholders: those of the
/// style and of some desktops are too pale. Changes nothing when applied to its own result.
QPalette ReadablePalette(QPalette palette);

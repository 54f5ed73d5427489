#include "controls/Colors.h"

#include <algorithm>
#include <cmath>

namespace {

/// Shares of the text in a faint one, from the faintest on.
constexpr double kFaintShares[] = {0.6, 0.7, 0.8, 0.9};
/// How far a colour moves towards black or white at once, and how often until it is there.
constexpr double kStepShare = 0.05;
constexpr int kMostSteps = 100;

/// Linear light of one sRGB channel, 0 to 1.
double LinearChannel(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

/// Relative luminance of sRGB (ITU-R BT.709 weights), 0 to 1.
double Luminance(const QColor& color) {
    return 0.2126 * LinearChannel(color.redF()) + 0.7152 * LinearChannel(color.greenF()) +
           0.0722 * LinearChannel(color.blueF());
}

bool IsReadable(const QColor& text, const QColor& ground) {
    return Contrast(text, ground) >= kReadableContrast;
}

}  // namespace

double Contrast(const QColor& a, const QColor& b) {
    const auto [darker, lighter] = std::minmax({Luminance(a), Luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor ReadableTextColor(const QColor& background) {
    return Contrast(Qt::black, background) > Contrast(Qt::white, background) ? Qt::black
                                                                             : Qt::white;
}

QColor MixedColor(const QColor& a, const QColor& b, double share) {
    const auto mix = [share](int first, int second) {
        return qRound(first * share + second * (1 - share));
    };
    return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
}

QColor FaintTextColor(const QColor& text, const QColor& ground) {
    for (const double share : kFaintShares) {
        if (const QColor faint = MixedColor(text, ground, share); IsReadable(faint, ground)) {
            return faint;
        }
    }
    return text;
}

QColor ContrastingColor(QColor color, const QColor& ground, double contrast) {
    const QColor end = ReadableTextColor(ground);
    for (int step = 0; step < kMostSteps && Contrast(color, ground) < contrast; ++step) {
        color = MixedColor(end, color, kStepShare);
    }
    return color;
}

QPalette ReadablePalette(QPalette palette) {
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
        const auto keepReadable = [&](QPalette::ColorRole moved, QPalette::ColorRole fixed) {
            const QColor color = palette.color(group, moved);
            if (const QColor other = palette.color(group, fixed); !IsReadable(color, other)) {
                palette.setColor(group, moved, ContrastingColor(color, other, kReadableContrast));
            }
        };
        keepReadable(QPalette::Highlight, QPalette::HighlightedText);
        keepReadable(QPalette::Link, QPalette::Base);
        const QColor base = palette.color(group, QPalette::Base);
        const QColor hint = palette.color(group, QPalette::PlaceholderText);
        if (!IsReadable(MixedColor(hint, base, hint.alphaF()), base)) {
            palette.setColor(group, QPalette::PlaceholderText,
                             FaintTextColor(palette.color(group, QPalette::Text), base));
        }
    }
    return palette;
}

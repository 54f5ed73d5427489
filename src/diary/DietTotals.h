// The totals of a day against the daily targets: texts, the bar as data, the widths of the columns.
#pragma once

#include <QString>
#include <functional>

#include "app/Preferences.h"

/// "%3.1f/" from 0.1 to below 10, otherwise a rounded whole number and "/".
QString TotalText(double value);

/// How the bar of a nutrient is filled.
enum class EBarFill {
    Empty,    ///< all yellow: no target, or less than 1 % of it
    Partial,  ///< green from the left, the rest yellow
    Over,     ///< all red: the target is reached
};
struct CTotalsBar {
    EBarFill fill = EBarFill::Empty;
    double percent = 0;  ///< of the target
};
CTotalsBar BarOf(double total, double target);

/// One row of the totals list.
struct CTotalsRow {
    QString name;     ///< without its colon
    QString total;    ///< "9.5/"
    QString target;   ///< empty when there is no target
    QString percent;  ///< "47%", empty when there is no target
    CTotalsBar bar;
};
/// `total` and `target` in the nutrient's stored unit; energy is shown in `unit`.
CTotalsRow TotalsRow(int nutrient, const QString& name, double total, double target,
                     EEnergyUnit unit);

/// Width of a text in pixels.
using TextWidth = std::function<int(const QString& text)>;

/// The name with a colon; a name wider than `width` pixels is cut at its end and gets "...".
QString FittedName(const QString& name, int width, const TextWidth& widthOf);

/// Widths of the five columns in pixels; a `percent` of 0 hides the last one.
struct CTotalsColumns {
    int name = 0;
    int bar = 0;
    int total = 0;
    int target = 0;
    int percent = 0;

    bool operator==(const CTotalsColumns&) const = default;
};
/// All widths in pixels; `widestName` is that of the widest displayed name with its colon.
CTotalsColumns TotalsColumnWidths(int listWidth, int scrollBarWidth, int widestName,
                                  const TextWidth& widthOf);

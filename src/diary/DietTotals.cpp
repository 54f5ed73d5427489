#include "diary/DietTotals.h"

#include <algorithm>

#include "platform/Messages.h"
#include "platform/NumberText.h"

using namespace Qt::StringLiterals;

namespace {

// Targets up to kLeastTargetShown are not shown; those up to kLeastDivisor are not divided by.
constexpr double kLeastTargetShown = 0.001;
constexpr double kLeastDivisor = 0.01;

constexpr int kLeastBarWidth = 10;
constexpr int kLeastNameWidth = 6;
constexpr int kNameMargin = 5;
constexpr int kListMargin = 4;

double PercentOf(double total, double target) {
    const double divisor = target > kLeastDivisor ? target : 1.0;
    return total / divisor * 100;
}

}  // namespace

QString TotalText(double value) {
    const QString number =
        value >= 0.1 && value < 10 ? ShownNumber(value, 1) : QString::number(Whole(value + 0.5));
    return number + u'/';
}

CTotalsBar BarOf(double total, double target) {
    const double percent = PercentOf(total, target);
    if (target <= kLeastTargetShown || percent < 1) {
        return {EBarFill::Empty, percent};
    }
    return {percent >= 100 ? EBarFill::Over : EBarFill::Partial, percent};
}

CTotalsRow TotalsRow(int nutrient, const QString& name, double total, double target,
                     EEnergyUnit unit) {
    const auto shown = [&](double value) {
        return TotalText(nutrient == kEnergyIndex ? EnergyShown(value, unit) : value);
    };
    CTotalsRow row{name, shown(total), {}, {}, BarOf(total, target)};
    if (target > kLeastTargetShown) {
        row.target = shown(target);
        row.percent = FormatText("%d%%"_L1, {Whole(PercentOf(total, target) + 0.5)});
    }
    return row;
}

QString FittedName(const QString& name, int width, const TextWidth& widthOf) {
    if (widthOf(name + u':') <= width) {
        return name + u':';
    }
    QString cut = name;
    while (!cut.isEmpty() && widthOf(cut + u"...:"_s) > width) {
        cut.chop(1);
    }
    return cut + u"...:"_s;
}

CTotalsColumns TotalsColumnWidths(int listWidth, int scrollBarWidth, int widestName,
                                  const TextWidth& widthOf) {
    const int available = listWidth - scrollBarWidth - kListMargin;
    CTotalsColumns columns;
    columns.total = columns.target = widthOf(u"9999/"_s) + 1;
    columns.percent = widthOf(u"999%"_s) + 1;
    columns.name = std::min(widestName + kNameMargin, listWidth / 3);

    const int numbers = columns.total + columns.target + columns.percent;
    columns.bar = available - numbers - columns.name;
    if (columns.bar >= kLeastBarWidth) {
        return columns;
    }
    columns.bar = kLeastBarWidth;
    columns.name = available - numbers - columns.bar;
    if (columns.name >= kLeastNameWidth) {
        return columns;
    }
    columns.name = kLeastNameWidth;
    columns.percent = 0;
    columns.total = columns.target = std::max(0, (available - columns.name - columns.bar) / 2);
    return columns;
}

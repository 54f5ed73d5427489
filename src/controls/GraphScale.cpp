#include "controls/GraphScale.h"

#include <QLocale>
#include <algorithm>
#include <array>
#include <cmath>

namespace {
constexpr int kMostDecimals = 6;
/// Ranges below these, absolute and as a share of the value, are too small for distinct labels.
constexpr double kLeastRange = 1e-5;
constexpr double kLeastShare = 1e-9;
/// Damaged entries may have any value; beyond this the arithmetic of axes would overflow.
constexpr double kMostValue = 1e300;

/// 1, 2 or 5 times a power of ten, not below `least`.
double RoundStep(double least) {
    const double power = std::pow(10, std::floor(std::log10(least)));
    for (const double factor : {1.0, 2.0, 5.0}) {
        if (factor * power >= least * (1 - 1e-9)) {
            return factor * power;
        }
    }
    return 10 * power;
}

/// A step between date ticks and the format of their labels.
struct CDateStep {
    int days;  ///< 0 for steps in months
    int months;
    const char* format;
};
constexpr std::array<CDateStep, 7> kDateSteps = {{
    {1, 0, "d MMM"},
    {7, 0, "d MMM"},
    {14, 0, "d MMM"},
    {0, 1, "MMM yyyy"},
    {0, 3, "MMM yyyy"},
    {0, 6, "MMM yyyy"},
    {0, 12, "yyyy"},
}};

/// Stops at `most` + 1 ticks, which means that the step is too small. `years` multiplies the step.
std::vector<CDateTick> TicksOf(const CDateStep& step, int years, QDate from, QDate to, int most) {
    std::vector<CDateTick> ticks;
    const int months = step.months * years;
    QDate day = from;
    if (months > 0) {
        // The first day of a month whose number since year 0 is a multiple of the step.
        const int month = (from.year() * 12 + from.month() - 1 + months - 1) / months * months;
        day = QDate(month / 12, month % 12 + 1, 1);
        if (day < from) {
            day = day.addMonths(months);
        }
    }
    const QString format = QString::fromLatin1(step.format);
    while (day.isValid() && day <= to && static_cast<int>(ticks.size()) <= most) {
        ticks.push_back({day, QLocale().toString(day, format)});
        day = months > 0 ? day.addMonths(months) : day.addDays(step.days);
    }
    return ticks;
}
}  // namespace

std::vector<double> CAxis::Ticks() const {
    std::vector<double> ticks;
    const auto count = static_cast<int>(std::lround((high - low) / step));
    for (int i = 0; i <= count; ++i) {
        ticks.push_back(low + i * step);
    }
    return ticks;
}

CAxis ValueAxis(double low, double high, int mostTicks) {
    low = std::clamp(low, -kMostValue, kMostValue);
    high = std::clamp(high, -kMostValue, kMostValue);
    if (!(high - low > std::max(kLeastRange, std::abs(high) * kLeastShare))) {
        const double room = std::max(std::abs(low) * 0.05, 1.0);
        low -= room;
        high += room;
    }
    CAxis axis;
    const int intervals = std::max(1, mostTicks - 1);
    double least = (high - low) / intervals;
    for (;;) {
        axis.step = RoundStep(least);
        axis.low = std::floor(low / axis.step + 1e-9) * axis.step;
        axis.high = std::ceil(high / axis.step - 1e-9) * axis.step;
        if (std::lround((axis.high - axis.low) / axis.step) <= intervals || intervals == 1) {
            break;
        }
        least = axis.step * 1.1;
    }
    axis.decimals =
        std::clamp(static_cast<int>(-std::floor(std::log10(axis.step) + 1e-9)), 0, kMostDecimals);
    if (intervals == 1) {
        axis.step = axis.high - axis.low;
    }
    return axis;
}

std::vector<CDateTick> DateTicks(QDate from, QDate to, int most) {
    for (const CDateStep& step : kDateSteps) {
        std::vector<CDateTick> ticks = TicksOf(step, 1, from, to, most);
        if (static_cast<int>(ticks.size()) <= most) {
            return ticks.empty() ? TicksOf(kDateSteps[0], 1, from, from, 1) : ticks;
        }
    }
    for (const int years : {2, 5, 10, 20, 50, 100, 500, 1000}) {
        std::vector<CDateTick> ticks = TicksOf(kDateSteps.back(), years, from, to, most);
        if (static_cast<int>(ticks.size()) <= most) {
            return ticks;
        }
    }
    return {};
}

std::vector<QPointF> ThinnedLine(const std::vector<QPointF>& points) {
    constexpr double kColumns = 2;
    std::vector<QPointF> thinned;
    std::size_t begin = 0;
    while (begin < points.size()) {
        const double column = std::floor(points[begin].x() / kColumns);
        std::size_t end = begin + 1;
        std::size_t lowest = begin;
        std::size_t highest = begin;
        for (; end < points.size() && std::floor(points[end].x() / kColumns) == column; ++end) {
            lowest = points[end].y() < points[lowest].y() ? end : lowest;
            highest = points[end].y() > points[highest].y() ? end : highest;
        }
        thinned.push_back(points[std::min(lowest, highest)]);
        if (lowest != highest) {
            thinned.push_back(points[std::max(lowest, highest)]);
        }
        begin = end;
    }
    return thinned;
}

bool ClipLine(QPointF& from, QPointF& to, double left, double right) {
    if (from.x() > to.x()) {
        std::swap(from, to);
    }
    if (to.x() < left || from.x() > right) {
        return false;
    }
    const QPointF start = from;
    const QPointF end = to;
    const auto at = [&](double x) {
        return QPointF(x,
                       start.y() + (end.y() - start.y()) * (x - start.x()) / (end.x() - start.x()));
    };
    if (from.x() < left) {
        from = at(left);
    }
    if (to.x() > right) {
        to = at(right);
    }
    return true;
}

// The scaling of the graphs: axes with round numbers, dates along the bottom, lines with no more
// points than pixel columns.
#pragma once

#include <QDate>
#include <QPointF>
#include <QString>
#include <vector>

/// Where an axis begins and ends: multiples of its step, or round numbers when it is one step long.
struct CAxis {
    double low = 0;
    double high = 1;
    double step = 1;
    int decimals = 0;  ///< of its labels

    /// From low to high.
    [[nodiscard]] std::vector<double> Ticks() const;
};

/// Covers `low` to `high` in steps of 1, 2 or 5 times a power of ten, with at most `mostTicks`
/// ticks (2 or more). A range too small for distinct labels, or of a single value, is widened.
CAxis ValueAxis(double low, double high, int mostTicks);

struct CDateTick {
    QDate day;
    QString label;
};
/// Days, weeks, months, quarters or years between two days, at most `most` of them, all of one
/// kind; labelled in the locale's words. One tick at `from` when no round day lies between them.
std::vector<CDateTick> DateTicks(QDate from, QDate to, int most);

/// Maps values to pixels.
struct CScale {
    double low;
    double high;
    double first;  ///< pixel of `low`
    double last;   ///< pixel of `high`
    [[nodiscard]] double At(double value) const {
        return high > low ? first + (value - low) / (high - low) * (last - first)
                          : (first + last) / 2;
    }
};

/// Thins a line in pixels, sorted by x: of every two pixel columns it keeps the lowest and the
/// highest point, so that no peak is lost and there are no more points than columns.
std::vector<QPointF> ThinnedLine(const std::vector<QPointF>& points);

/// Cuts the line between two points to the part within `left` to `right`; false when there is
/// none. Afterwards `from` is the left end.
bool ClipLine(QPointF& from, QPointF& to, double left, double right);

#include "platform/FileTime.h"

namespace {
constexpr qint64 kUnitsPerMillisecond = 10'000;
constexpr qint64 kUnitsPerMinute = 60'000 * kUnitsPerMillisecond;
constexpr qint64 kUnitsPerDay = 86'400'000 * kUnitsPerMillisecond;
const qint64 kEpochJulianDay = QDate(1601, 1, 1).toJulianDay();
}  // namespace

FileTime ToFileTime(QDate date, QTime time) {
    if (!date.isValid() || !time.isValid()) {
        return 0;
    }
    const qint64 wholeSeconds = time.msecsSinceStartOfDay() / 1000;
    return FirstMomentOf(date) + wholeSeconds * 1000 * kUnitsPerMillisecond;
}

QDate DateOf(FileTime moment) {
    if (moment < 0) {
        return {};
    }
    return QDate::fromJulianDay(kEpochJulianDay + moment / kUnitsPerDay);
}

QTime TimeOf(FileTime moment) {
    if (moment < 0) {
        return {};
    }
    return QTime::fromMSecsSinceStartOfDay(
        static_cast<int>(moment % kUnitsPerDay / kUnitsPerMillisecond));
}

FileTime FirstMomentOf(QDate date) {
    return (date.toJulianDay() - kEpochJulianDay) * kUnitsPerDay;
}

FileTime LastMomentOf(QDate date) {
    return FirstMomentOf(date) + kUnitsPerDay - 1;
}

FileTime LastMomentOfMinute(QDate date, QTime time) {
    return ToFileTime(date, time) + kUnitsPerMinute - 1;
}

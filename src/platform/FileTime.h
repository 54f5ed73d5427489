// A diary moment: 100-nanosecond units since 1601-01-01 00:00 of local wall-clock time, with no
// time zone anywhere. This file is the only place that turns it to and from dates.
#pragma once

#include <QDate>
#include <QTime>
#include <QtGlobal>

using FileTime = qint64;

/// Milliseconds are dropped. An invalid date or time gives 0 (1601-01-01 00:00).
FileTime ToFileTime(QDate date, QTime time);
/// A negative moment gives an invalid date or time.
QDate DateOf(FileTime moment);
QTime TimeOf(FileTime moment);

/// First and last moment of a day, both inclusive.
FileTime FirstMomentOf(QDate date);
FileTime LastMomentOf(QDate date);
/// Last moment of the minute that begins at `time`.
FileTime LastMomentOfMinute(QDate date, QTime time);

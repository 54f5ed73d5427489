// Dates as a person types them.
#pragma once

#include <QDate>
#include <QString>
#include <optional>

/// Reads a typed date; nothing when it is not understood. `held` is the date before typing.
///
/// - `t`: today.
/// - `+3`, `-1`: that many days from `held`.
/// - The beginning of a weekday's name, three letters or more, in English or in the locale's
///   language, with or without accents: the latest such day up to `today`.
/// - Day, month and year in the order of the locale's short format, whatever separates them; the
///   first of four digits is a year (ISO 8601). A missing year, or month and year, is that of
///   `held`; four digits alone are a year. Six or eight digits need no separators.
/// - `shownFormat`, in which months may have names.
///
/// Two digits of a year mean the year from 80 years before `today`'s to 19 years after it.
std::optional<QDate> TypedDate(const QString& text, QDate held, QDate today,
                               const QString& shownFormat);

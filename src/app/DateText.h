// How dates are shown to a person.
#pragma once

#include <QDate>
#include <QString>

/// The locale's short format with the year in full.
QString ShownDateFormat();
/// Empty for an invalid date.
QString ShownDate(QDate date);

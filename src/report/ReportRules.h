// What is decided about a report before it is written.
#pragma once

#include <QString>
#include <optional>

#include "platform/Messages.h"
#include "report/ReportRequest.h"

/// The first reason why there can be no such report, as its message; nothing when all is well.
std::optional<QString> CheckReportRequest(const CReportRequest& request);

/// What the file dialog offers; a report of Ann's up to 15 April 2006 is named "Ann060415.csv".
CFileChoice ReportFileChoice(const QString& profileName, QDate to);

/// Pattern of the date pickers: days and months of two digits where the locale's short pattern is
/// one with slashes, and the year in full.
QString ReportDatePattern(const QString& shortPattern);

// The checks and defaults of a report before it is written.
#pragma once

#include <QString>
#include <optional>

#include "platform/Messages.h"
#include "report/ReportRequest.h"

/// The message about the first invalid option; nothing when all are valid.
std::optional<QString> CheckReportRequest(const CReportRequest& request);

/// For the file dialog; Ann's report up to 15 April 2006 is named "Ann060415.csv".
CFileChoice ReportFileChoice(const QString& profileName, QDate to);

/// Pattern of the date fields: the locale's short pattern with the year in full, and with two-digit
/// days and months if it has slashes.
QString ReportDatePattern(const QString& shortPattern);

// Writes a report into a file.
#pragma once

#include "app/VelmoraDoc.h"
#include "report/ReportRequest.h"

/// Writes the active profile's diaries, a day at a time. `request` has passed CheckReportRequest.
/// Shows "Cannot create file." and returns false when the file could not be created or written
/// whole; an old file of that name is then unchanged. Also returns false, after a message with
/// their number, when damaged entries are left out. A record with a wrong number of properties
/// shows its message and ends its day. The progress window's Cancel does not stop it.
bool WriteReport(CVelmoraDoc& doc, const CReportRequest& request, const QString& path);

// Writes a report into a file.
#pragma once

#include "app/VelmoraDoc.h"
#include "report/ReportRequest.h"

/// Streams the active profile's diaries, a day at a time. `request` has passed CheckReportRequest.
/// False after "Cannot create file.": the file could not be created or did not come out whole, and
/// an old file of that name is as it was. Cancel of the progress window does not stop it. A record
/// with a wrong number of properties shows its message and ends its day. False as well when entries
/// are left out because of damage, after a message with their number.
bool WriteReport(CVelmoraDoc& doc, const CReportRequest& request, const QString& path);

// The command "Report...".
#pragma once

#include "app/VelmoraDoc.h"

class QWidget;

/// Asks what to report and where to, and writes it; cancelling either ends it silently. Messages
/// tell of failures, none of success.
void RunReport(CVelmoraDoc& doc, QWidget* parent);

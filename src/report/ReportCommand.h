// The command "Report...".
#pragma once

#include "app/VelmoraDoc.h"

class QWidget;

/// Asks for the options and the file, and writes the report; either can be cancelled. Failures show
/// messages, success does not.
void RunReport(CVelmoraDoc& doc, QWidget* parent);

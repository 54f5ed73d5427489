// The command "Report...".
#pragma once

#include "app/VelmoraDoc.h"

class QWidget;

/// Asks for the options and the file, and writes the report; either can be cancelled. Failures show
/// messages, success is told.
void RunReport(CVelmoraDoc& doc, QWidget* parent);

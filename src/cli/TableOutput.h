// Tab-separated output with a header line, for scripts.
#pragma once

#include <QString>
#include <QStringList>
#include <cstdio>

#include "platform/FileTime.h"

/// A line of UTF-8 text as it stands.
void PrintLine(std::FILE* stream, const QString& text);

/// Cells are separated by tabs; a tab, line break or backslash inside a cell is written as \t, \n,
/// \r or \\, so that a row is always one line.
void PrintRow(const QStringList& cells);

/// The cells "2026-05-31" and "07:30:00" of a diary entry.
QStringList MomentCells(FileTime moment);

/// Flushes standard output; false when something could not be written.
bool FinishOutput();

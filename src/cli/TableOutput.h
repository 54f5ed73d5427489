// Tab-separated output with a header line, for scripts.
#pragma once

#include <QString>
#include <QStringList>
#include <cstdio>

#include "platform/FileTime.h"

/// Writes a line of UTF-8 text unchanged.
void PrintLine(std::FILE* stream, const QString& text);

/// Writes cells to standard output, separated by tabs. A tab, line break or backslash in a cell is
/// written as \t, \n, \r or \\, any other control character as \x and two hexadecimal digits, so
/// that a row is always one line and a terminal obeys none of it.
void PrintRow(const QStringList& cells);

/// Writes a text that may have several lines, each escaped like a cell of PrintRow.
void PrintMessage(std::FILE* stream, const QString& text);

/// The cells "2026-05-31" and "07:30:00" of a diary entry.
QStringList MomentCells(FileTime moment);

/// Flushes standard output; false when something could not be written.
bool FinishOutput();

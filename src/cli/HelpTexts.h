// The parts of which the help of velmora-cli is made, for the terminal and for the manual.
#pragma once

#include "cli/Commands.h"

/// "diet add"; only the group if it has one command.
QString NameOf(const CCommand& command);

/// `text`, which names the option in a line of usage, with brackets if it need not be given.
QString UsageItem(const COption& option, const QString& text);

/// What the option is, with its choices or limits.
QString HelpOf(const COption& option);

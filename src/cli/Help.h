// The help of velmora-cli.
#pragma once

#include "cli/Commands.h"

/// Prints the usage of the named command, or of each command of the group, on standard error.
void PrintUsage(const CNamedCommand& named);

/// Prints on standard output the named command, or each of the group, with its options; the list of
/// all commands when no group is named.
void PrintHelp(const CNamedCommand& named);

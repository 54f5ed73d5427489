// What velmora-cli says about its commands.
#pragma once

#include "cli/Commands.h"

/// On standard error: where help is, and how the named command or each of the group is called.
void PrintUsage(const CNamedCommand& named);

/// On standard output: the named command, or each of the group, with its options; the list of all
/// commands when no group is named.
void PrintHelp(const CNamedCommand& named);

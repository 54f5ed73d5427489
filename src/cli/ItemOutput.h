// Items of the catalogue as rows of output.
#pragma once

#include "cli/Commands.h"

/// The header of a table of items.
void PrintItemHeader(ECatalogueKind kind);
/// The row of the item at a position, whose texts are known. False after the message when it
/// cannot be read.
bool PrintItem(const CCommandContext& context, const QString& category,
               const CCategoryListEntry& entry);
/// All of an item, a field a row. False after the message when it or a component cannot be read.
bool PrintWholeItem(const CCommandContext& context, const QString& category,
                    const CCategoryListEntry& entry);

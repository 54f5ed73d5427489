// Items of the catalogue as rows of output.
#pragma once

#include "cli/Commands.h"

/// The header of a table of items.
void PrintItemHeader(ECatalogueKind kind);
/// The row of the item in `entry`. False after a message when it must be read and cannot be.
bool PrintItem(const CCommandContext& context, const QString& category,
               const CCategoryListEntry& entry);
/// All values of an item, one per row. False after a message when it or a component cannot be read.
bool PrintWholeItem(const CCommandContext& context, const QString& category,
                    const CCategoryListEntry& entry);

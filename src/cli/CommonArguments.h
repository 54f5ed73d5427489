// What several commands read from their arguments in the same way.
#pragma once

#include "cli/Commands.h"

/// Identifier of the category named by --category; "There is no category selected." and false
/// when the kind has none of that name.
bool FindCategoryArgument(CCommandContext& context, ECatalogueKind kind, qint32& categoryId);

/// False after a message when the volume has no profile of that name.
bool CheckProfileExists(CVelmoraDoc& doc, const QString& name);
/// Opens a profile; false after a message when that fails.
bool LoadProfileNamed(CVelmoraDoc& doc, const QString& name);

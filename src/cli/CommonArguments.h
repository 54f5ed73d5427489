// What several commands read from their arguments in the same way.
#pragma once

#include "app/LeftOutText.h"
#include "catalogue/pick/PickForm.h"
#include "cli/Commands.h"

/// The category of the command's kind with that name; nothing after "There is no category
/// selected." when there is none.
std::optional<CCategoryEntry> FindCategoryNamed(CCommandContext& context, const QString& name);

/// Reports what damage has left out of the output so far; false when that is anything.
bool ReportDamage(const CLeftOut& leftOut, const CListWords& words);

/// "food", "menu" or "recipe".
QString KindName(EItemKind kind);

/// False after a message when the volume has no profile of that name.
bool CheckProfileExists(CVelmoraDoc& doc, const QString& name);
/// Opens a profile; false after a message when that fails.
bool LoadProfileNamed(CVelmoraDoc& doc, const QString& name);
/// Opens the profile that --profile names; false after a message when that fails.
bool LoadProfileArgument(CCommandContext& context);

/// Picks what --category, --name and, where items have one, --type name, from the lists that a
/// form offers of a catalogue; false after a message when something is not on offer.
bool PickItem(CPickForm& form, const CArguments& arguments, ECatalogueKind kind);

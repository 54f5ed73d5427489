// Reading of arguments that several commands have in common.
#pragma once

#include "app/LeftOutText.h"
#include "catalogue/pick/PickForm.h"
#include "cli/Commands.h"

/// The category of the command's kind with that name. Nothing, after "There is no category
/// selected.", when there is none.
std::optional<CCategoryEntry> FindCategoryNamed(CCommandContext& context, const QString& name);

/// Reports damaged records that were left out of the output; false when there are any.
bool ReportDamage(const CLeftOut& leftOut, const CListWords& words);

/// "food", "menu" or "recipe".
QString KindName(EItemKind kind);

/// False after a message when there is no volume of that path.
bool CheckHasData(const QString& volumePath);

/// False after a message when the volume has no profile of that name.
bool CheckProfileExists(CVelmoraDoc& doc, const QString& name);
/// Opens a profile; false after a message when that fails.
bool LoadProfileNamed(CVelmoraDoc& doc, const QString& name);
/// Opens the profile that --profile names; false after a message when that fails.
bool LoadProfileArgument(CCommandContext& context);

/// Picks --category, --name and, if items have one, --type from a form's lists, as a user would in
/// its dialog; false after a message when one of them is not in its list.
bool PickItem(CPickForm& form, const CArguments& arguments, ECatalogueKind kind);

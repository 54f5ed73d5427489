// What several commands read from their arguments in the same way.
#pragma once

#include "catalogue/AddFoodForm.h"
#include "cli/Commands.h"

/// The category of the command's kind with that name; nothing after "There is no category
/// selected." when there is none.
std::optional<CCategoryEntry> FindCategoryNamed(CCommandContext& context, const QString& name);

/// "food", "menu" or "recipe".
QString KindName(EItemKind kind);

/// False after a message when the volume has no profile of that name.
bool CheckProfileExists(CVelmoraDoc& doc, const QString& name);
/// Opens a profile; false after a message when that fails.
bool LoadProfileNamed(CVelmoraDoc& doc, const QString& name);
/// Opens the profile that --profile names; false, with nothing said, after an argument that cannot
/// be read.
bool LoadProfileArgument(CCommandContext& context);

/// False after a message when `row` is not among the `choices` of a form.
/// A form has said itself why it offers nothing.
bool CheckOffered(const QStringList& choices, const QString& row, EPicker picker,
                  ECatalogueKind kind);

/// Picks what --category, --name and, where items have one, --type name, from the lists that a
/// form offers of a catalogue; false after a message when something is not on offer.
template <typename Form>
bool PickItem(Form& form, const CArguments& arguments, ECatalogueKind kind) {
    for (const auto& [picker, option] : {std::pair(EPicker::Category, "--category"),
                                         {EPicker::Name, "--name"},
                                         {EPicker::Type, "--type"}}) {
        const QString row = arguments.Text(option);
        if (picker == EPicker::Type && !CatalogueLayoutOf(kind).namesType) {
            break;
        }
        if (!CheckOffered(form.Choices(picker), row, picker, kind)) {
            return false;
        }
        form.Pick(picker, row);
    }
    return true;
}

// velmora-cli categories ...
#include "catalogue/items/CatalogueRules.h"
#include "cli/Commands.h"
#include "cli/CommonArguments.h"
#include "cli/TableOutput.h"

using namespace Qt::StringLiterals;

namespace {
// The choices are in the order of the kinds' codes.
constexpr COption kKindOption = Required(
    {"--kind", EValue::Choice, "foods|menus|recipes|exercises", "what the categories hold"});
constexpr COption kOptions[] = {kKindOption};
constexpr COption kDeleteOptions[] = {kKindOption, kYesOption};

void TakeKind(CCommandContext& context) {
    context.kind = static_cast<ECatalogueKind>(context.arguments.Choice("--kind"));
}

bool List(CCommandContext& context) {
    TakeKind(context);
    PrintRow({u"category"_s});
    const CCategoryEntries categories =
        context.doc.Database().Categories().ReadEntries(context.kind);
    for (const CCategoryEntry& category : categories.entries) {
        PrintRow({category.name});
    }
    return ReportDamage(categories.leftOut, kCategoryWords);
}

bool Add(CCommandContext& context) {
    TakeKind(context);
    const QString name = context.arguments.Word(0).trimmed();
    if (name.isEmpty()) {
        ShowMessage(u"Please enter category name."_s);
        return false;
    }
    return CCatalogueRules(context.doc.Database(), context.kind).AddCategory(name) >= 0;
}

bool Rename(CCommandContext& context) {
    TakeKind(context);
    const auto category = FindCategoryNamed(context, context.arguments.Word(0));
    return category && CCatalogueRules(context.doc.Database(), context.kind)
                           .RenameCategory(category->id, context.arguments.Word(1));
}

bool Delete(CCommandContext& context) {
    TakeKind(context);
    const auto category = FindCategoryNamed(context, context.arguments.Word(0));
    return category &&
           CCatalogueRules(context.doc.Database(), context.kind).DeleteCategory(category->id);
}

constexpr CCommand kCommands[] = {
    {"categories", "list", "", kOptions, EAccess::Reads, "list the categories of a kind", List},
    {"categories", "add", "NAME", kOptions, EAccess::Writes, "add a category", Add},
    {"categories", "rename", "OLD NEW", kOptions, EAccess::Writes, "rename a category", Rename},
    {"categories", "delete", "NAME", kDeleteOptions, EAccess::Writes,
     "delete a category with its items", Delete},
};
}  // namespace

std::span<const CCommand> CategoryCommands() {
    return kCommands;
}

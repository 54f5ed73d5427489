// velmora-cli categories ...
#include "catalogue/CatalogueKinds.h"
#include "catalogue/CatalogueRules.h"
#include "cli/Commands.h"
#include "cli/CommonArguments.h"
#include "cli/TableOutput.h"

using namespace Qt::StringLiterals;

namespace {
constexpr COptionDescription kKindOption = {"--kind", true, true};
constexpr COptionDescription kOptions[] = {kKindOption};
constexpr COptionDescription kDeleteOptions[] = {kKindOption, kYesOption};

/// Takes --kind over; false when it names none.
bool ReadKind(CCommandContext& context) {
    QStringList kinds;
    for (const ECatalogueKind kind : {ECatalogueKind::Foods, ECatalogueKind::Menus,
                                      ECatalogueKind::Recipes, ECatalogueKind::Exercises}) {
        kinds.append(QString::fromLatin1(KindOf(kind).plural));
    }
    context.kind = static_cast<ECatalogueKind>(context.arguments.Choice("--kind", kinds));
    return context.arguments.GetError().isEmpty();
}

bool List(CCommandContext& context) {
    if (!ReadKind(context)) {
        return false;
    }
    PrintRow({u"category"_s});
    for (const CCategoryEntry& category : context.doc.Database().ListCategories(context.kind)) {
        PrintRow({category.name});
    }
    return true;
}

bool Add(CCommandContext& context) {
    if (!ReadKind(context)) {
        return false;
    }
    const QString name = context.arguments.Word(0).trimmed();
    if (name.isEmpty()) {
        ShowMessage(u"Please enter category name."_s);
        return false;
    }
    return CCatalogueRules(context.doc.Database(), context.kind).AddCategory(name) >= 0;
}

bool Rename(CCommandContext& context) {
    if (!ReadKind(context)) {
        return false;
    }
    const auto category = FindCategoryNamed(context, context.arguments.Word(0));
    return category && CCatalogueRules(context.doc.Database(), context.kind)
                           .RenameCategory(category->id, context.arguments.Word(1));
}

bool Delete(CCommandContext& context) {
    if (!ReadKind(context)) {
        return false;
    }
    const auto category = FindCategoryNamed(context, context.arguments.Word(0));
    return category &&
           CCatalogueRules(context.doc.Database(), context.kind).DeleteCategory(category->id);
}

constexpr CCommand kCommands[] = {
    {"categories", "list", 0, kOptions, "--kind foods|menus|recipes|exercises", List},
    {"categories", "add", 1, kOptions, "--kind foods|menus|recipes|exercises NAME", Add},
    {"categories", "rename", 2, kOptions, "--kind foods|menus|recipes|exercises OLD NEW", Rename},
    {"categories", "delete", 1, kDeleteOptions, "--kind foods|menus|recipes|exercises NAME --yes",
     Delete},
};
}  // namespace

std::span<const CCommand> CategoryCommands() {
    return kCommands;
}

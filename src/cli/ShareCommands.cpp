// velmora-cli share and take-in
#include "catalogue/items/CatalogueKinds.h"
#include "catalogue/items/CategoryItems.h"
#include "catalogue/share/ShareItems.h"
#include "catalogue/share/TakeIn.h"
#include "cli/Commands.h"
#include "cli/CommonArguments.h"

using namespace Qt::StringLiterals;

namespace {
/// In the order of the kinds' codes.
constexpr COption kKindOption = {"--kind", EValue::Choice, "food|menu|recipe|exercise",
                                 "the kind of the items"};
constexpr COption kOnlyCategory = {"--category", EValue::Text, "CATEGORY", "only of this category"};
constexpr COption kOnlyName = {"--name", EValue::Text, "NAME", "only items of this name"};
constexpr COption kOnlyType = {"--type", EValue::Text, "TYPE", "only items of this type"};
constexpr COption kShareOptions[] = {Required(kKindOption), kOnlyCategory, kOnlyName, kOnlyType};
constexpr COption kTakeInOptions[] = {{"--existing", EValue::Choice, "overwrite|skip|add",
                                       "what to do with existing items; default skip"}};

ECatalogueKind KindIn(const CArguments& arguments) {
    return static_cast<ECatalogueKind>(arguments.Choice("--kind"));
}

QString CheckType(const CArguments& arguments) {
    const CCatalogueKind& kind = KindOf(KindIn(arguments));
    return arguments.Has("--type") && !kind.Layout().namesType
               ? u"--type is not for "_s + QLatin1StringView(kind.words.many)
               : QString();
}

/// The items of a category that --name and --type let through.
CLeftOut AddItemsOf(CCommandContext& context, qint32 categoryId, std::vector<int>& positions) {
    const CArguments& arguments = context.arguments;
    return ForEachItemOf(
        context.doc.Database(), context.kind, categoryId,
        [&](int position, const QString& name, const QString& type) {
            if (arguments.Text("--name", name) == name && arguments.Text("--type", type) == type) {
                positions.push_back(position);
            }
        });
}

bool Share(CCommandContext& context) {
    const ECatalogueKind kind = KindIn(context.arguments);
    CCommandContext ofKind{context.doc, context.arguments, context.volume, kind};
    CCategoryEntries categories;
    if (context.arguments.Has("--category")) {
        const auto only = FindCategoryNamed(ofKind, context.arguments.Text("--category"));
        if (!only) {
            return false;
        }
        categories.entries = {*only};
    } else {
        categories = context.doc.Database().Categories().ReadEntries(kind);
    }
    CShareRequest request{kind, {}};
    CLeftOut leftOut;
    for (const CCategoryEntry& category : categories.entries) {
        leftOut += AddItemsOf(ofKind, category.id, request.positions);
    }
    const bool isShared = ShareItems(context.doc.Database(), request, context.arguments.Word(0));
    const bool areCategoriesWhole = ReportDamage(categories.leftOut, kCategoryWords);
    return ReportDamage(leftOut, KindOf(kind).words) && areCategoriesWhole && isShared;
}

bool TakeIn(CCommandContext& context) {
    const auto policy = static_cast<EDuplicatePolicy>(
        context.arguments.Choice("--existing", static_cast<int>(EDuplicatePolicy::Skip)));
    return TakeInFile(context.doc.Database(), policy, context.arguments.Word(0));
}

constexpr CCommand kCommands[] = {
    {"share", "", "FILE", kShareOptions, EAccess::Reads,
     "write items to a file for another Velmora", Share, CheckType},
    {"take-in", "", "FILE", kTakeInOptions, EAccess::Writes, "add the items of such a file",
     TakeIn},
};
}  // namespace

std::span<const CCommand> ShareCommands() {
    return kCommands;
}

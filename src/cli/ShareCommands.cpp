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

bool Share(CCommandContext& context) {
    const CArguments& arguments = context.arguments;
    const ECatalogueKind kind = KindIn(arguments);
    CDatabase& database = context.doc.Database();
    std::optional<qint32> categoryId;
    if (arguments.Has("--category")) {
        CCommandContext ofKind{context.doc, arguments, context.volume, kind};
        const auto category = FindCategoryNamed(ofKind, arguments.Text("--category"));
        if (!category) {
            return false;
        }
        categoryId = category->id;
    }
    CShareRequest request{kind, {}};
    const CLeftOut leftOut = ForEachItemOf(
        database, kind, categoryId, [&](int position, const QString& name, const QString& type) {
            if (arguments.Text("--name", name) == name && arguments.Text("--type", type) == type) {
                request.positions.push_back(position);
            }
        });
    const bool isShared = ShareItems(database, request, arguments.Word(0));
    const bool areCategoriesWhole =
        ReportDamage(database.Categories().ReadEntries(kind).leftOut, kCategoryWords);
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
    {"take-in", "", "FILE", kTakeInOptions, EAccess::Writes,
     "add the items of a file from another Velmora", TakeIn},
};
}  // namespace

std::span<const CCommand> ShareCommands() {
    return kCommands;
}

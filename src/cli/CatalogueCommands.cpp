// velmora-cli foods|menus|recipes|exlib ...
#include "catalogue/exchange/CsvExchange.h"
#include "catalogue/exchange/RecipeText.h"
#include "catalogue/items/CatalogueKinds.h"
#include "catalogue/items/CatalogueRules.h"
#include "catalogue/pick/FindItems.h"
#include "catalogue/tables/FoodTablesImport.h"
#include "cli/Commands.h"
#include "cli/CommonArguments.h"
#include "cli/ItemOutput.h"
#include "platform/Messages.h"

#include <QHash>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
constexpr COption kImportOptions[] = {{"--existing", EValue::Choice, "overwrite|skip|add",
                                       "what to do with existing items; default overwrite"}};
constexpr COption kOnly = {"--only", EValue::Choices, kFoodTypes,
                           "the types of foods; default all"};
constexpr COption kTableOptions[] = {{"--existing", EValue::Choice, "overwrite|skip|add",
                                      "what to do with existing foods; default skip"},
                                     kOnly};
constexpr COption kInCategory[] = {kCategoryOption};

// The options that identify an item: name and type for foods, name for menus and recipes.
constexpr COption kToOption = {"--to", EValue::Text, "CATEGORY", "the category to move it to"};
constexpr COption kCategory = Required(kCategoryOption);
constexpr COption kName = Required(kNameOption);
constexpr COption kType = Required(kTypeOption);
constexpr COption kTypedItem[] = {kCategory, kName, kType};
constexpr COption kItem[] = {kCategory, kName};
constexpr COption kTypedItemTo[] = {kCategory, kName, kType, Required(kToOption)};
constexpr COption kItemTo[] = {kCategory, kName, Required(kToOption)};
constexpr COption kTypedItemYes[] = {kCategory, kName, kType, kYesOption};
constexpr COption kItemYes[] = {kCategory, kName, kYesOption};
constexpr COption kFindTyped[] = {
    {"--type", EValue::Text, "TEXT", "a text that the type must contain, too"}};

const CItemTexts& TextsOf(const CCommandContext& context) {
    return KindOf(context.kind).item;
}

const CListWords& WordsOf(const CCommandContext& context) {
    return KindOf(context.kind).words;
}

/// The item given by --category, --name and --type; nothing after a message.
std::optional<CCategoryListEntry> FindItemArgument(CCommandContext& context) {
    const CArguments& arguments = context.arguments;
    const auto category = FindCategoryNamed(context, arguments.Text("--category"));
    if (!category) {
        return std::nullopt;
    }
    const QString name = arguments.Text("--name");
    const QString type = arguments.Text("--type");
    const int position =
        context.doc.Database().Catalogue().FindItem(context.kind, category->id, name, type);
    if (position < 0) {
        ShowMessage(QString::fromLatin1(TextsOf(context).notFound));
        return std::nullopt;
    }
    return CCategoryListEntry{position, category->id, name, type};
}

bool Import(CCommandContext& context) {
    const auto policy = static_cast<EDuplicatePolicy>(context.arguments.Choice("--existing"));
    return ImportCatalogueFile(context.doc.Database(), context.kind, policy,
                               context.arguments.Word(0));
}

bool ImportTables(CCommandContext& context) {
    const CArguments& arguments = context.arguments;
    CFoodTablesRequest request{.folder = arguments.Word(0)};
    request.policy = static_cast<EDuplicatePolicy>(
        arguments.Choice("--existing", static_cast<int>(request.policy)));
    request.foodTypes = arguments.Choices(kOnly.name, request.foodTypes);
    return ImportFoodTables(context.doc.Database(), request);
}

QString CheckTypes(const CArguments& arguments) {
    return arguments.Choices(kOnly.name, kAllFoodTypes) == 0
               ? QLatin1StringView(kOnly.name) + u" needs "_s + NeededValue(kOnly)
               : QString();
}

bool Export(CCommandContext& context) {
    CExportRequest request;
    if (context.arguments.Has("--category")) {
        const auto category = FindCategoryNamed(context, context.arguments.Text("--category"));
        if (!category) {
            return false;
        }
        request.choice = EExportChoice::CurrentCategory;
        request.categoryId = category->id;
    }
    return ExportCatalogueFile(context.doc.Database(), context.kind, request,
                               context.arguments.Word(0));
}

bool List(CCommandContext& context) {
    CDatabase& database = context.doc.Database();
    CCategoryEntries categories;
    if (context.arguments.Has("--category")) {
        const auto only = FindCategoryNamed(context, context.arguments.Text("--category"));
        if (!only) {
            return false;
        }
        categories.entries = {*only};
    } else {
        categories = database.Categories().ReadEntries(context.kind);
    }
    PrintItemHeader(context.kind);
    CLeftOut leftOut;
    for (const CCategoryEntry& category : categories.entries) {
        const CCategoryList list =
            database.Catalogue().FillCategoryList(context.kind, category.id, kNoCapacity);
        leftOut += list.leftOut;
        for (const CCategoryListEntry& item : list.entries) {
            leftOut.damaged += PrintItem(context, category.name, item) ? 0 : 1;
        }
    }
    const bool areCategoriesWhole = ReportDamage(categories.leftOut, kCategoryWords);
    return ReportDamage(leftOut, WordsOf(context)) && areCategoriesWhole;
}

bool Show(CCommandContext& context) {
    const auto entry = FindItemArgument(context);
    return entry && PrintWholeItem(context, context.arguments.Text("--category"), *entry);
}

bool Find(CCommandContext& context) {
    CDatabase& database = context.doc.Database();
    const QString name = context.arguments.Word(0);
    const QString type = context.arguments.Text("--type");
    if (name.isEmpty() && type.isEmpty()) {
        ShowMessage(u"Please enter at least one item for find."_s);
        return false;
    }
    CLeftOut leftOut;
    int position = FindNextItem(database, context.kind, name, {type}, 0, &leftOut);
    if (position < 0) {
        ShowMessage(QString::fromLatin1(TextsOf(context).notFound));
        (void)ReportDamage(leftOut, WordsOf(context));  // the command has failed already
        return false;
    }
    QHash<qint32, QString> categories;
    for (const CCategoryEntry& category : database.Categories().List(context.kind)) {
        categories.insert(category.id, category.name);
    }
    PrintItemHeader(context.kind);
    CCatalogueItem item(context.kind);
    while (position >= 0) {
        const bool isRead = database.Items(context.kind).ReadQuietly(position, item);
        const qint32 categoryId = item.GetCategoryId();
        if (!isRead || !PrintItem(context, categories.value(categoryId),
                                  {position, categoryId, item.GetName(), item.GetType()})) {
            ++leftOut.damaged;
        }
        position = FindNextItem(database, context.kind, name, {type}, position + 1, &leftOut);
    }
    return ReportDamage(leftOut, WordsOf(context));
}

bool Move(CCommandContext& context) {
    const auto entry = FindItemArgument(context);
    if (!entry) {
        return false;
    }
    CCatalogueRules rules(context.doc.Database(), context.kind);
    const CCatalogueRules::Entries selected = {*entry};
    const std::vector<CCategoryEntry> targets = rules.MoveTargets(selected);
    if (targets.empty()) {
        return false;
    }
    const auto target =
        std::ranges::find(targets, context.arguments.Text("--to"), &CCategoryEntry::name);
    if (target == targets.end()) {
        ShowMessage(kNoCategorySelected);
        return false;
    }
    return rules.Move(selected, *target) == 1;
}

bool Duplicate(CCommandContext& context) {
    const auto entry = FindItemArgument(context);
    if (!entry) {
        return false;
    }
    const int position = CCatalogueRules(context.doc.Database(), context.kind).Duplicate({*entry});
    CCatalogueItem copy(context.kind);
    if (!context.doc.Database().Items(context.kind).Read(position, copy)) {
        return false;
    }
    PrintItemHeader(context.kind);
    return PrintItem(context, context.arguments.Text("--category"),
                     {position, copy.GetCategoryId(), copy.GetName(), copy.GetType()});
}

bool Delete(CCommandContext& context) {
    const auto entry = FindItemArgument(context);
    return entry && CCatalogueRules(context.doc.Database(), context.kind).Delete({*entry}) == 1;
}

bool Text(CCommandContext& context) {
    const auto entry = FindItemArgument(context);
    if (!entry) {
        return false;
    }
    const CComposedForm form(context.doc, context.kind, entry->position, entry->categoryId);
    if (!form.IsLoaded()) {
        ShowMessage(QString::fromLatin1(TextsOf(context).cannotLoad));
        return false;
    }
    return SaveRecipeTextFile(form, context.arguments.Word(0));
}

constexpr CCommand kTypedCommands[] = {
    {"", "import", "FILE", kImportOptions, EAccess::Writes, "add the items of a CSV file", Import},
    {"", "export", "FILE", kInCategory, EAccess::Reads, "write the items to a CSV file", Export},
    {"", "list", "", kInCategory, EAccess::Reads, "list the items", List},
    {"", "show", "", kTypedItem, EAccess::Reads, "show all values of an item", Show},
    {"", "find", "TEXT", kFindTyped, EAccess::Reads, "list the items whose names hold a text",
     Find},
    {"", "move", "", kTypedItemTo, EAccess::Writes, "move an item to another category", Move},
    {"", "duplicate", "", kTypedItem, EAccess::Writes, "copy an item within its category",
     Duplicate},
    {"", "delete", "", kTypedItemYes, EAccess::Writes, "delete an item", Delete},
    {"", "import-fdc", "DIR", kTableOptions, EAccess::Writes,
     "add the foods of a FoodData Central download", ImportTables, CheckTypes},
};
constexpr CCommand kNamedCommands[] = {
    {"", "import", "FILE", kImportOptions, EAccess::Writes, "add the items of a CSV file", Import},
    {"", "export", "FILE", kInCategory, EAccess::Reads, "write the items to a CSV file", Export},
    {"", "list", "", kInCategory, EAccess::Reads, "list the items", List},
    {"", "show", "", kItem, EAccess::Reads, "show all values of an item", Show},
    {"", "find", "TEXT", {}, EAccess::Reads, "list the items whose names hold a text", Find},
    {"", "move", "", kItemTo, EAccess::Writes, "move an item to another category", Move},
    {"", "duplicate", "", kItem, EAccess::Writes, "copy an item within its category", Duplicate},
    {"", "delete", "", kItemYes, EAccess::Writes, "delete an item", Delete},
};
constexpr CCommand kTextCommands[] = {
    {"", "text", "FILE", kItem, EAccess::Reads, "write a recipe to a text file", Text},
};
constexpr CCommand kLibraryCommands[] = {
    {"", "import", "FILE", kImportOptions, EAccess::Writes, "add the items of a CSV file", Import},
    {"", "export", "FILE", kInCategory, EAccess::Reads, "write the items to a CSV file", Export},
    {"", "list", "", kInCategory, EAccess::Reads, "list the items", List},
    {"", "find", "TEXT", kFindTyped, EAccess::Reads, "list the items whose names hold a text",
     Find},
};

/// The commands of a kind; their group is that of the kind.
struct CKindGroup {
    ECatalogueKind kind;
    std::span<const CCommand> commands;
};
constexpr CKindGroup kGroups[] = {
    {ECatalogueKind::Foods, kTypedCommands},       {ECatalogueKind::Menus, kNamedCommands},
    {ECatalogueKind::Recipes, kNamedCommands},     {ECatalogueKind::Recipes, kTextCommands},
    {ECatalogueKind::Exercises, kLibraryCommands},
};
}  // namespace

std::span<const CCommand> CatalogueCommands() {
    static const std::vector<CCommand> commands = [] {
        std::vector<CCommand> all;
        for (const CKindGroup& group : kGroups) {
            for (CCommand command : group.commands) {
                command.group = KindOf(group.kind).commandGroup;
                command.kind = group.kind;
                all.push_back(command);
            }
        }
        return all;
    }();
    return commands;
}

// velmora-cli foods|menus|recipes|exlib ...
#include "catalogue/CatalogueKinds.h"
#include "catalogue/CatalogueRules.h"
#include "catalogue/CsvExchange.h"
#include "catalogue/FindItems.h"
#include "catalogue/RecipeText.h"
#include "cli/Commands.h"
#include "cli/CommonArguments.h"
#include "cli/ItemOutput.h"
#include "platform/Messages.h"

#include <QHash>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
constexpr COptionDescription kImportOptions[] = {{"--existing", true, false}};
constexpr COptionDescription kCategoryOptions[] = {{"--category", true, false}};

// What names an item: foods by name and type, menus and recipes by name.
constexpr COptionDescription kCategoryOption = {"--category", true, true};
constexpr COptionDescription kNameOption = {"--name", true, true};
constexpr COptionDescription kTypeOption = {"--type", true, true};
constexpr COptionDescription kToOption = {"--to", true, true};
constexpr COptionDescription kTypedItem[] = {kCategoryOption, kNameOption, kTypeOption};
constexpr COptionDescription kItem[] = {kCategoryOption, kNameOption};
constexpr COptionDescription kTypedItemTo[] = {kCategoryOption, kNameOption, kTypeOption,
                                               kToOption};
constexpr COptionDescription kItemTo[] = {kCategoryOption, kNameOption, kToOption};
constexpr COptionDescription kTypedItemYes[] = {kCategoryOption, kNameOption, kTypeOption,
                                                kYesOption};
constexpr COptionDescription kItemYes[] = {kCategoryOption, kNameOption, kYesOption};
constexpr COptionDescription kFindTyped[] = {{"--type", true, false}};

const CCatalogueTexts& TextsOf(const CCommandContext& context) {
    return CatalogueTextsOf(context.kind);
}

/// The item that --category, --name and --type name; nothing after a message.
std::optional<CCategoryListEntry> FindItemArgument(CCommandContext& context) {
    CArguments& arguments = context.arguments;
    const auto category = FindCategoryNamed(context, arguments.Text("--category"));
    if (!category) {
        return std::nullopt;
    }
    const QString name = arguments.Text("--name");
    const QString type = arguments.Text("--type");
    const int position = context.doc.Database().FindItem(context.kind, category->id, name, type);
    if (position < 0) {
        ShowMessage(QString::fromLatin1(TextsOf(context).notFound));
        return std::nullopt;
    }
    return CCategoryListEntry{position, category->id, name, type};
}

bool Import(CCommandContext& context) {
    const int existing =
        context.arguments.Choice("--existing", {u"overwrite"_s, u"skip"_s, u"add"_s});
    if (!context.arguments.GetError().isEmpty()) {
        return false;
    }
    return ImportCatalogueFile(context.doc.Database(), context.kind,
                               static_cast<EExisting>(existing), context.arguments.Word(0));
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
    std::vector<CCategoryEntry> categories = database.ListCategories(context.kind);
    if (context.arguments.Has("--category")) {
        const auto only = FindCategoryNamed(context, context.arguments.Text("--category"));
        if (!only) {
            return false;
        }
        categories = {*only};
    }
    PrintItemHeader(context.kind);
    for (const CCategoryEntry& category : categories) {
        for (const CCategoryListEntry& item :
             database.FillCategoryList(context.kind, category.id)) {
            if (!PrintItem(context, category.name, item)) {
                return false;
            }
        }
    }
    return true;
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
    int position = FindNextItem(database, context.kind, name, {type}, 0);
    if (position < 0) {
        ShowMessage(QString::fromLatin1(TextsOf(context).notFound));
        return false;
    }
    QHash<qint32, QString> categories;
    for (const CCategoryEntry& category : database.ListCategories(context.kind)) {
        categories.insert(category.id, category.name);
    }
    PrintItemHeader(context.kind);
    CCatalogueItem item(context.kind);
    while (position >= 0) {
        if (!database.Items(context.kind).Read(position, item)) {
            ShowMessage(QString::fromLatin1(TextsOf(context).cannotLoad));
            return false;
        }
        const qint32 categoryId = item.GetCategoryId();
        if (!PrintItem(context, categories.value(categoryId),
                       {position, categoryId, item.GetName(), item.GetType()})) {
            return false;
        }
        position = FindNextItem(database, context.kind, name, {type}, position + 1);
    }
    return true;
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
    if (position < 0 || !context.doc.Database().Items(context.kind).Read(position, copy)) {
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
    {"", "import", 1, kImportOptions, "FILE [--existing overwrite|skip|add]", Import},
    {"", "export", 1, kCategoryOptions, "FILE [--category NAME]", Export},
    {"", "list", 0, kCategoryOptions, "[--category NAME]", List},
    {"", "show", 0, kTypedItem, "--category C --name N --type T", Show},
    {"", "find", 1, kFindTyped, "TEXT [--type TEXT]", Find},
    {"", "move", 0, kTypedItemTo, "--category C --name N --type T --to CATEGORY", Move},
    {"", "duplicate", 0, kTypedItem, "--category C --name N --type T", Duplicate},
    {"", "delete", 0, kTypedItemYes, "--category C --name N --type T --yes", Delete},
};
constexpr CCommand kNamedCommands[] = {
    {"", "import", 1, kImportOptions, "FILE [--existing overwrite|skip|add]", Import},
    {"", "export", 1, kCategoryOptions, "FILE [--category NAME]", Export},
    {"", "list", 0, kCategoryOptions, "[--category NAME]", List},
    {"", "show", 0, kItem, "--category C --name N", Show},
    {"", "find", 1, {}, "TEXT", Find},
    {"", "move", 0, kItemTo, "--category C --name N --to CATEGORY", Move},
    {"", "duplicate", 0, kItem, "--category C --name N", Duplicate},
    {"", "delete", 0, kItemYes, "--category C --name N --yes", Delete},
};
constexpr CCommand kTextCommand = {
    "recipes", "text", 1, kItem, "--category C --name N FILE", Text, ECatalogueKind::Recipes};
constexpr CCommand kExlibCommands[] = {
    {"exlib", "import", 1, kImportOptions, "FILE [--existing overwrite|skip|add]", Import,
     ECatalogueKind::Exercises},
    {"exlib", "export", 1, kCategoryOptions, "FILE [--category NAME]", Export,
     ECatalogueKind::Exercises},
    {"exlib", "list", 0, kCategoryOptions, "[--category NAME]", List, ECatalogueKind::Exercises},
    {"exlib", "find", 1, kFindTyped, "TEXT [--type TEXT]", Find, ECatalogueKind::Exercises},
};
}  // namespace

std::span<const CCommand> CatalogueCommands() {
    static const std::vector<CCommand> commands = [] {
        std::vector<CCommand> all;
        for (const ECatalogueKind kind :
             {ECatalogueKind::Foods, ECatalogueKind::Menus, ECatalogueKind::Recipes}) {
            const bool isTyped = CatalogueLayoutOf(kind).namesType;
            for (CCommand command : isTyped ? std::span<const CCommand>(kTypedCommands)
                                            : std::span<const CCommand>(kNamedCommands)) {
                command.group = KindOf(kind).plural;
                command.kind = kind;
                all.push_back(command);
            }
        }
        all.push_back(kTextCommand);
        all.insert(all.end(), std::begin(kExlibCommands), std::end(kExlibCommands));
        return all;
    }();
    return commands;
}

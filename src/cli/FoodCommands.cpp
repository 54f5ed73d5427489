// velmora-cli foods ...
#include "catalogue/CsvExchange.h"
#include "catalogue/FindItems.h"
#include "cli/Commands.h"
#include "cli/CommonArguments.h"
#include "cli/TableOutput.h"
#include "platform/Messages.h"
#include "platform/NumberText.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace {
constexpr COptionDescription kImportOptions[] = {{"--existing", true, false}};
constexpr COptionDescription kCategoryOptions[] = {{"--category", true, false}};
constexpr COptionDescription kShowOptions[] = {
    {"--category", true, true}, {"--name", true, true}, {"--type", true, true}};
constexpr COptionDescription kFindOptions[] = {{"--type", true, false}};

bool Import(CCommandContext& context) {
    const int existing =
        context.arguments.Choice("--existing", {u"overwrite"_s, u"skip"_s, u"add"_s});
    if (!context.arguments.GetError().isEmpty()) {
        return false;
    }
    return ImportCatalogueFile(context.doc.Database(), ECatalogueKind::Foods,
                               static_cast<EExisting>(existing), context.arguments.Word(0));
}

bool Export(CCommandContext& context) {
    CDatabase& database = context.doc.Database();
    CExportRequest request;
    if (context.arguments.Has("--category")) {
        request.choice = EExportChoice::CurrentCategory;
        if (!FindCategoryArgument(context, ECatalogueKind::Foods, request.categoryId)) {
            return false;
        }
    }
    return ExportCatalogueFile(database, ECatalogueKind::Foods, request, context.arguments.Word(0));
}

bool List(CCommandContext& context) {
    CDatabase& database = context.doc.Database();
    std::vector<CCategoryEntry> categories = database.ListCategories(ECatalogueKind::Foods);
    if (context.arguments.Has("--category")) {
        qint32 only = -1;
        if (!FindCategoryArgument(context, ECatalogueKind::Foods, only)) {
            return false;
        }
        std::erase_if(categories,
                      [only](const CCategoryEntry& category) { return category.id != only; });
    }
    PrintRow({u"category"_s, u"name"_s, u"type"_s});
    for (const CCategoryEntry& category : categories) {
        for (const CCategoryListEntry& food :
             database.FillCategoryList(ECatalogueKind::Foods, category.id)) {
            PrintRow({category.name, food.name, food.type});
        }
    }
    return true;
}

bool Show(CCommandContext& context) {
    CDatabase& database = context.doc.Database();
    qint32 categoryId = -1;
    if (!FindCategoryArgument(context, ECatalogueKind::Foods, categoryId)) {
        return false;
    }
    const int position =
        database.FindItem(ECatalogueKind::Foods, categoryId, context.arguments.Text("--name"),
                          context.arguments.Text("--type"));
    CFoodItem food;
    if (position < 0) {
        ShowMessage(u"Food not found."_s);
        return false;
    }
    if (!database.Foods().Read(position, food)) {
        ShowMessage(u"Cannot load food."_s);
        return false;
    }
    PrintRow({u"field"_s, u"value"_s});
    PrintRow({u"category"_s, context.arguments.Text("--category")});
    PrintRow({u"name"_s, food.GetName()});
    PrintRow({u"type"_s, food.GetType()});
    for (int i = 0; i < kNutrientCount; ++i) {
        PrintRow({QLatin1StringView(NutrientNamesOf(i).csvName),
                  ShortestNumber(food.GetNutrientValue(i))});
    }
    for (int i = 0; i < kServingCount; ++i) {
        PrintRow({u"Serving size %1"_s.arg(i + 1), food.GetServingName(i)});
        PrintRow({u"Serving weight %1"_s.arg(i + 1), ShortestNumber(food.GetServingWeight(i))});
    }
    return true;
}

bool Find(CCommandContext& context) {
    CDatabase& database = context.doc.Database();
    const QString name = context.arguments.Word(0);
    const QString type = context.arguments.Text("--type");
    if (name.isEmpty() && type.isEmpty()) {
        ShowMessage(u"Please enter at least one item for find."_s);
        return false;
    }
    int position = FindNextItem(database, ECatalogueKind::Foods, name, type, 0);
    if (position < 0) {
        ShowMessage(u"Food not found."_s);
        return false;
    }
    QHash<qint32, QString> categories;
    for (const CCategoryEntry& category : database.ListCategories(ECatalogueKind::Foods)) {
        categories.insert(category.id, category.name);
    }
    PrintRow({u"category"_s, u"name"_s, u"type"_s});
    while (position >= 0) {
        CFoodItem food;
        if (!database.Foods().Read(position, food)) {
            ShowMessage(u"Cannot load food."_s);
            return false;
        }
        PrintRow({categories.value(food.GetCategoryId()), food.GetName(), food.GetType()});
        position = FindNextItem(database, ECatalogueKind::Foods, name, type, position + 1);
    }
    return true;
}

constexpr CCommand kCommands[] = {
    {"foods", "import", 1, kImportOptions, "FILE [--existing overwrite|skip|add]", Import},
    {"foods", "export", 1, kCategoryOptions, "FILE [--category NAME]", Export},
    {"foods", "list", 0, kCategoryOptions, "[--category NAME]", List},
    {"foods", "show", 0, kShowOptions, "--category C --name N --type T", Show},
    {"foods", "find", 1, kFindOptions, "TEXT [--type TEXT]", Find},
};
}  // namespace

std::span<const CCommand> FoodCommands() {
    return kCommands;
}

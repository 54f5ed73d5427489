// velmora-cli diet ...
#include "catalogue/AddFoodForm.h"
#include "cli/Commands.h"
#include "cli/CommonArguments.h"
#include "cli/TableOutput.h"
#include "diary/DietRules.h"
#include "diary/DietTotals.h"
#include "platform/Messages.h"
#include "platform/NumberText.h"

using namespace Qt::StringLiterals;

namespace {
constexpr COptionDescription kAddOptions[] = {
    {"--profile", true, true}, {"--date", true, true},     {"--time", true, true},
    {"--meal", true, true},    {"--category", true, true}, {"--name", true, true},
    {"--type", true, false},   {"--serving", true, false}, {"--amount", true, false},
    {"--kind", true, false},
};
constexpr COptionDescription kDayOptions[] = {{"--profile", true, true}, {"--date", true, true}};

QStringList MealNames() {
    QStringList names;
    for (int meal = 0; meal < kMealCount; ++meal) {
        names.append(MealName(meal));
    }
    return names;
}

bool SelectServing(CAddFoodForm& form, const QString& name) {
    const auto index = static_cast<int>(form.Servings().indexOf(name));
    if (index < 0) {
        ShowMessage(FormatText("There is no serving '%s'."_L1, {name}));
        return false;
    }
    form.SelectServing(index);
    return true;
}

bool Add(CCommandContext& context) {
    CArguments& arguments = context.arguments;
    const QDate day = arguments.Date("--date");
    const QTime time = arguments.Time("--time");
    const int meal = arguments.Choice("--meal", MealNames());
    const auto kind = static_cast<EItemKind>(arguments.Choice(
        "--kind",
        {KindName(EItemKind::Food), KindName(EItemKind::Menu), KindName(EItemKind::Recipe)}));
    arguments.Number("--amount");
    if (kind == EItemKind::Food) {
        arguments.Require("--type");
    }
    if (!LoadProfileArgument(context) || !MayAddToMeal(meal)) {
        return false;
    }
    CAddFoodForm form(context.doc, CAddFoodRequest::ForNewEntry(time));
    form.SetKind(kind);
    if (!PickItem(form, arguments, CatalogueOf(kind))) {
        return false;
    }
    if (arguments.Has("--serving") && !SelectServing(form, arguments.Text("--serving"))) {
        return false;
    }
    if (arguments.Has("--amount")) {
        form.SetAmountText(arguments.Text("--amount"));
    }
    return form.Confirm() && AddDietEntry(context.doc, day, meal, form.GetResult());
}

bool LoadDay(CCommandContext& context) {
    const QDate day = context.arguments.Date("--date");
    if (!LoadProfileArgument(context)) {
        return false;
    }
    context.doc.Database().LoadDietDay(day);
    return true;
}

bool List(CCommandContext& context) {
    if (!LoadDay(context)) {
        return false;
    }
    QStringList header = {u"date"_s, u"time"_s, u"meal"_s,    u"kind"_s,  u"category"_s,
                          u"name"_s, u"type"_s, u"serving"_s, u"amount"_s};
    for (int i = 0; i < kNutrientCount; ++i) {
        header.append(QLatin1StringView(NutrientNamesOf(i).csvName));
    }
    PrintRow(header);
    CDatabase& database = context.doc.Database();
    for (int i = 0; i < database.GetDietCount(); ++i) {
        const CDietEntry& entry = *database.GetDietEntry(i);
        QStringList row = {DateOf(entry.GetMoment()).toString(Qt::ISODate),
                           TimeOf(entry.GetMoment()).toString(Qt::ISODate),
                           MealNames().value(entry.GetMeal()),
                           KindName(entry.GetKind()),
                           entry.GetCategory(),
                           entry.GetName(),
                           entry.GetType(),
                           entry.GetServingName(),
                           ShortestNumber(entry.GetAmount())};
        for (int nutrient = 0; nutrient < kNutrientCount; ++nutrient) {
            row.append(ShortestNumber(entry.GetNutrientValue(nutrient)));
        }
        PrintRow(row);
    }
    return true;
}

bool Day(CCommandContext& context) {
    if (!LoadDay(context)) {
        return false;
    }
    PrintRow({u"nutrient"_s, u"total"_s, u"target"_s, u"percent"_s});
    const CProfileSettings& settings = context.doc.Settings();
    for (int i = 0; i < kNutrientCount; ++i) {
        const QString name = QLatin1StringView(NutrientNamesOf(i).csvName);
        const double total = context.doc.Database().GetDietTotal(i);
        const double target = settings.targets.nutrients[i];
        const CTotalsRow shown = TotalsRow(i, name, total, target, EEnergyUnit::Kcal);
        PrintRow({name, ShortestNumber(total), ShortestNumber(target),
                  shown.percent.chopped(shown.percent.isEmpty() ? 0 : 1)});
    }
    return true;
}

constexpr CCommand kCommands[] = {
    {"diet", "add", 0, kAddOptions,
     "--profile P --date D --time HH:MM --meal NAME [--kind food|menu|recipe]\n"
     "        --category C --name N [--type T] [--serving NAME] [--amount X]",
     Add},
    {"diet", "list", 0, kDayOptions, "--profile P --date D", List},
    {"diet", "day", 0, kDayOptions, "--profile P --date D", Day},
};
}  // namespace

std::span<const CCommand> DietCommands() {
    return kCommands;
}

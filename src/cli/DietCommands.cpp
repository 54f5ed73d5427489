// velmora-cli diet ...
#include "catalogue/pick/AddFoodForm.h"
#include "cli/Commands.h"
#include "cli/CommonArguments.h"
#include "cli/TableOutput.h"
#include "diary/CopyRules.h"
#include "diary/DietRules.h"
#include "diary/DietTotals.h"
#include "diary/QuickEntry.h"
#include "platform/Messages.h"
#include "platform/NumberText.h"

using namespace Qt::StringLiterals;

namespace {
// The choices are in the order of the meals' and kinds' codes.
constexpr COption kMealOption = {"--meal", EValue::Choice,
                                 "Breakfast|Morning|Lunch|Afternoon|Dinner|Evening", "the meal"};
constexpr COption kKindOption = {"--kind", EValue::Choice, "food|menu|recipe", "what was eaten"};
constexpr COption kAddOptions[] = {
    Required(kProfileOption),
    Required(kDateOption),
    Required(kTimeOption),
    Required(kMealOption),
    Required(kCategoryOption),
    Required(kNameOption),
    kKindOption,
    {"--type", EValue::Text, "TYPE", "the food's type; menus and recipes have none"},
    {"--serving", EValue::Text, "NAME", "the serving; default the first one"},
    {"--amount", EValue::Number, "NUMBER", "servings eaten; default 1", 0, 100000},
};
constexpr COption kMealOfDayOption = {"--meal",
                                      EValue::Choice,
                                      kMealOption.value,
                                      "the meal of the day before it; default all of them",
                                      0,
                                      0,
                                      ENeed::Repeatable};
constexpr COption kCopyOptions[] = {
    Required(kProfileOption),
    Required({"--from", EValue::Date, "DATE", "the day to copy from"}),
    kMealOfDayOption,
    Required({"--to", EValue::Date, "DATE", "the day to copy to"}),
};
constexpr COption kQuickOptions[] = {
    Required(kProfileOption),
    {"--date", EValue::Date, "DATE", "the day; default today"},
    {"--meal", EValue::Choice, kMealOption.value, "the meal; default that of the hour"},
    {"--dry-run", EValue::None, "", "only show what would be added"},
};
constexpr COption kDayOptions[] = {Required(kProfileOption), Required(kDateOption)};

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

EItemKind KindArgument(const CArguments& arguments) {
    return static_cast<EItemKind>(arguments.Choice("--kind"));
}

QString CheckAdd(const CArguments& arguments) {
    return KindArgument(arguments) == EItemKind::Food && !arguments.Has("--type")
               ? u"--type is missing"_s
               : QString();
}

bool Add(CCommandContext& context) {
    const CArguments& arguments = context.arguments;
    const QDate day = arguments.Date("--date");
    const QTime time = arguments.Time("--time");
    const int meal = arguments.Choice("--meal");
    const EItemKind kind = KindArgument(arguments);
    if (!LoadProfileArgument(context)) {
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

/// The meal given after a day; all meals without one.
std::optional<qint32> MealAfter(const CArguments& arguments, const char* day) {
    const std::vector<int> meals = arguments.ChoicesAfter("--meal", day);
    return meals.empty() ? std::nullopt : std::optional<qint32>(meals.front());
}

QString CheckCopy(const CArguments& arguments) {
    const std::size_t from = arguments.ChoicesAfter("--meal", "--from").size();
    const std::size_t to = arguments.ChoicesAfter("--meal", "--to").size();
    const bool isClear = from <= 1 && to <= 1 && (from + to > 0 || !arguments.Has("--meal"));
    return isClear ? QString() : u"--meal belongs after --from or --to, once"_s;
}

bool Copy(CCommandContext& context) {
    const CArguments& arguments = context.arguments;
    if (!LoadProfileArgument(context)) {
        return false;
    }
    const auto [entries, leftOut] =
        EntriesOfMeal(context.doc, arguments.Date("--from"), MealAfter(arguments, "--from"));
    if (entries.empty()) {
        ShowMessage(u"There is nothing to copy."_s);
        (void)ReportDamage(leftOut, kEntryWords);  // the status is 1 in any case
        return false;
    }
    const CCopyPlace place{arguments.Date("--to"), {}, MealAfter(arguments, "--to")};
    const int copied = CopyEntries(context.doc, entries, {place});
    PrintRow({u"copied"_s, QString::number(copied)});
    const bool isWhole = ReportDamage(leftOut, kEntryWords);
    return isWhole && copied == std::ssize(entries);
}

bool Quick(CCommandContext& context) {
    const CArguments& arguments = context.arguments;
    const QDateTime now = QDateTime::currentDateTime();
    const int meal = arguments.Choice("--meal", MealAt(now.time()));
    if (!LoadProfileArgument(context)) {
        return false;
    }
    CQuickEntry line(context.doc);
    const std::vector<CQuickItem>& items = line.Read(arguments.Word(0));
    bool isUnderstood = !items.empty();
    for (const CQuickItem& item : items) {
        if (!item.refusal.isEmpty()) {
            ShowMessage(item.text + u": "_s + item.refusal);
            isUnderstood = false;
        }
    }
    if (items.empty()) {
        ShowMessage(u"There is nothing to add."_s);
    }
    if (!isUnderstood) {
        return false;
    }
    PrintRow(
        {u"kind"_s, u"category"_s, u"name"_s, u"type"_s, u"serving"_s, u"amount"_s, u"energy"_s});
    for (const CQuickItem& item : items) {
        CDietEntry entry;
        TakeChosenFood(context.doc.Database(), item.food, entry);
        PrintRow({KindName(entry.GetKind()), entry.GetCategory(), entry.GetName(), entry.GetType(),
                  entry.GetServingName(), ShortestNumber(entry.GetAmount()),
                  ShortestNumber(entry.GetNutrientValue(kEnergyIndex))});
    }
    return arguments.Has("--dry-run") ||
           AddQuickItems(context.doc, arguments.Date("--date", now.date()), now.time(), meal,
                         items) == std::ssize(items);
}

/// The whole day, without a limit on its entries; nothing after a message.
std::optional<CDayEntries> LoadDay(CCommandContext& context) {
    const QDate day = context.arguments.Date("--date");
    return LoadProfileArgument(context)
               ? std::optional(ReadDay(context.doc.Database().Diet(), day, kNoCapacity))
               : std::nullopt;
}

bool List(CCommandContext& context) {
    const std::optional<CDayEntries> day = LoadDay(context);
    if (!day) {
        return false;
    }
    QStringList header = {u"date"_s, u"time"_s, u"meal"_s,    u"kind"_s,  u"category"_s,
                          u"name"_s, u"type"_s, u"serving"_s, u"amount"_s};
    for (int i = 0; i < kNutrientCount; ++i) {
        header.append(QLatin1StringView(NutrientNamesOf(i).csvName));
    }
    PrintRow(header);
    for (const CListed<CDietEntry>& listed : day->Entries()) {
        const CDietEntry& entry = listed.entry;
        QStringList row =
            MomentCells(entry.GetMoment()) + QStringList{MealNames().value(entry.GetMeal()),
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
    return ReportDamage(day->LeftOut(), kEntryWords);
}

bool Day(CCommandContext& context) {
    const std::optional<CDayEntries> day = LoadDay(context);
    if (!day) {
        return false;
    }
    PrintRow({u"nutrient"_s, u"total"_s, u"target"_s, u"percent"_s});
    const CProfileSettings& settings = context.doc.Settings();
    for (int i = 0; i < kNutrientCount; ++i) {
        const QString name = QLatin1StringView(NutrientNamesOf(i).csvName);
        const double total = day->GetTotal(i);
        const double target = settings.targets.nutrients[i];
        const CTotalsRow shown = TotalsRow(i, name, total, target, EEnergyUnit::Kcal);
        PrintRow({name, ShortestNumber(total), ShortestNumber(target),
                  shown.percent.chopped(shown.percent.isEmpty() ? 0 : 1)});
    }
    return ReportDamage(day->LeftOut(), kEntryWords);
}

constexpr CCommand kCommands[] = {
    {"diet", "add", "", kAddOptions, EAccess::Writes, "add what was eaten to a day", Add, CheckAdd},
    {"diet", "copy", "", kCopyOptions, EAccess::Writes, "eat again what was eaten on another day",
     Copy, CheckCopy},
    {"diet", "quick", "TEXT", kQuickOptions, EAccess::Writes,
     "add what one line says: \"2 eggs, 150 g lentils\"", Quick},
    {"diet", "list", "", kDayOptions, EAccess::Reads, "list what was eaten on a day", List},
    {"diet", "day", "", kDayOptions, EAccess::Reads, "compare a day's totals with the targets",
     Day},
};
}  // namespace

std::span<const CCommand> DietCommands() {
    return kCommands;
}

#include "cli/ItemOutput.h"

#include "catalogue/items/CatalogueKinds.h"
#include "cli/CommonArguments.h"
#include "cli/TableOutput.h"
#include "platform/NumberText.h"

using namespace Qt::StringLiterals;

namespace {
bool ReportUnread(ECatalogueKind kind) {
    ShowMessage(QString::fromLatin1(KindOf(kind).item.cannotLoad));
    return false;
}

void PrintNutrients(const CNutrientItem& item) {
    for (int i = 0; i < kNutrientCount; ++i) {
        PrintRow({QLatin1StringView(NutrientNamesOf(i).csvName),
                  ShortestNumber(item.GetNutrientValue(i))});
    }
}

void PrintFood(const CFoodItem& food) {
    PrintRow({u"type"_s, food.GetType()});
    PrintNutrients(food);
    for (int i = 0; i < kServingCount; ++i) {
        PrintRow({u"Serving size %1"_s.arg(i + 1), food.GetServingName(i)});
        PrintRow({u"Serving weight %1"_s.arg(i + 1), ShortestNumber(food.GetServingWeight(i))});
    }
}

/// False after a message when a component cannot be read.
bool PrintComponents(CDatabase& database, ECatalogueKind kind, qint32 itemId) {
    CComposedItem component(kind);
    int number = 0;
    CLeftOut leftOut;
    for (const int position : database.Composed().ComponentPositions(kind, itemId, &leftOut)) {
        if (!database.Items(kind).Read(position, component)) {
            ++leftOut.damaged;
            continue;
        }
        const QString prefix = u"Component %1 "_s.arg(++number);
        PrintRow({prefix + u"kind"_s, KindName(component.GetItemKind())});
        PrintRow({prefix + u"name"_s, component.GetName()});
        PrintRow({prefix + u"type"_s, component.GetType()});
        PrintRow({prefix + u"serving size"_s, component.GetServingName()});
        PrintRow({prefix + u"number of servings"_s, ShortestNumber(component.GetServingX())});
        PrintRow({prefix + QLatin1StringView(NutrientNamesOf(kEnergyIndex).csvName),
                  ShortestNumber(component.GetNutrientValue(kEnergyIndex))});
    }
    return ReportDamage(leftOut, kComponentWords);
}

/// False after a message when a component cannot be read.
bool PrintComposed(CDatabase& database, ECatalogueKind kind, const CComposedItem& item) {
    PrintNutrients(item);
    PrintRow({u"Serving size"_s, item.GetServingName()});
    PrintRow({u"Number of servings"_s, ShortestNumber(item.GetServingX())});
    if (kind == ECatalogueKind::Recipes) {
        PrintRow({u"Instructions"_s, item.GetInstructions()});
    }
    return PrintComponents(database, kind, item.GetItemId());
}
}  // namespace

void PrintItemHeader(ECatalogueKind kind) {
    QStringList cells = {u"category"_s, u"name"_s};
    if (CatalogueLayoutOf(kind).namesType) {
        cells.append(u"type"_s);
    }
    if (kind == ECatalogueKind::Exercises) {
        cells.append({u"kcal_per_minute"_s, u"met"_s});
    }
    PrintRow(cells);
}

bool PrintItem(const CCommandContext& context, const QString& category,
               const CCategoryListEntry& entry) {
    QStringList cells = {category, entry.name};
    if (CatalogueLayoutOf(context.kind).namesType) {
        cells.append(entry.type);
    }
    if (context.kind == ECatalogueKind::Exercises) {
        CExerciseItem exercise;
        if (!context.doc.Database().Exlib().Read(entry.position, exercise)) {
            return ReportUnread(context.kind);
        }
        cells.append({ShortestNumber(exercise.GetEnergyRateKcalPerMinute()),
                      ShortestNumber(exercise.GetMet())});
    }
    PrintRow(cells);
    return true;
}

bool PrintWholeItem(const CCommandContext& context, const QString& category,
                    const CCategoryListEntry& entry) {
    const bool isFood = context.kind == ECatalogueKind::Foods;
    CDatabase& database = context.doc.Database();
    CFoodItem food;
    CComposedItem composed(isFood ? ECatalogueKind::Menus : context.kind);
    CItemRecord& item = isFood ? static_cast<CItemRecord&>(food) : composed;
    if (!database.Items(context.kind).Read(entry.position, item)) {
        return ReportUnread(context.kind);
    }
    PrintRow({u"field"_s, u"value"_s});
    PrintRow({u"category"_s, category});
    PrintRow({u"name"_s, entry.name});
    if (!isFood) {
        return PrintComposed(database, context.kind, composed);
    }
    PrintFood(food);
    return true;
}

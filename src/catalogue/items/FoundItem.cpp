#include "catalogue/items/FoundItem.h"

namespace {
constexpr double kLeastWeightGrams = 0.0001;

bool ReadFood(CDatabase& database, CFoundItem& found) {
    CFoodItem food;
    if (!database.Foods().ReadRecord(found.record, food)) {
        return false;
    }
    found.category = database.Categories().NameOf(found.kind, food.GetCategoryId());
    found.name = food.GetName();
    found.type = food.GetType();
    double weightGrams = 0;
    for (int index = 0; found.serving.isEmpty() && index < kServingCount; ++index) {
        found.serving = food.GetServingName(index);
        weightGrams = found.serving.isEmpty() ? 0 : food.GetServingWeight(index);
    }
    found.energyKcal = ValueOfServings(food.GetNutrientValue(kEnergyIndex), 1, weightGrams);
    return true;
}

bool ReadComposed(CDatabase& database, CFoundItem& found) {
    CComposedItem item(found.kind);
    if (!database.Items(found.kind).ReadRecord(found.record, item)) {
        return false;
    }
    found.category = database.Categories().NameOf(found.kind, item.GetParentId());
    found.name = item.GetName();
    found.type = item.GetType();
    found.serving = item.GetServingName();
    found.energyKcal = item.GetNutrientValue(kEnergyIndex);
    return true;
}

bool ReadExercise(CDatabase& database, CFoundItem& found) {
    CExerciseItem exercise;
    if (!database.Exlib().ReadRecord(found.record, exercise)) {
        return false;
    }
    found.category = database.Categories().NameOf(found.kind, exercise.GetCategoryId());
    found.name = exercise.GetName();
    found.type = exercise.GetType();
    found.energyKcal = exercise.GetEnergyRateKcalPerMinute();
    found.met = exercise.GetMet();
    return true;
}
}  // namespace

std::optional<CFoundItem> ReadFoundItem(CDatabase& database, const CSearchMatch& match) {
    CFoundItem found;
    found.kind = match.kind;
    found.record = match.record;
    const bool isRead = match.kind == ECatalogueKind::Foods ? ReadFood(database, found)
                        : HasComponents(match.kind)         ? ReadComposed(database, found)
                                                            : ReadExercise(database, found);
    return isRead ? std::optional(found) : std::nullopt;
}

double ValueOfServings(double value, double amount, double weightGrams) {
    return weightGrams > kLeastWeightGrams ? value * amount * weightGrams * 0.01 : value * amount;
}

#include "catalogue/items/ChosenFood.h"

#include "catalogue/items/CatalogueKinds.h"

#include <algorithm>

ECatalogueKind CatalogueOf(EItemKind kind) {
    const auto* const row = std::ranges::find(CatalogueKinds(), kind, &CCatalogueKind::itemKind);
    return row == CatalogueKinds().end() ? ECatalogueKind::Foods : row->code;
}

CFoodItem ItemFromEntry(CDatabase& database, const CDietEntry& entry) {
    CFoodItem item;
    item.SetCategoryId(
        database.Categories().IdOf(CatalogueOf(entry.GetKind()), entry.GetCategory()));
    item.SetName(entry.GetName());
    item.SetType(entry.GetType());
    item.SetNutrientValues(entry.GetNutrientValues());
    item.SetServingName(0, entry.GetServingName());
    item.SetServingWeight(0, entry.GetAmount());
    return item;
}

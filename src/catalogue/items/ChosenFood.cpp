#include "catalogue/items/ChosenFood.h"

ECatalogueKind CatalogueOf(EItemKind kind) {
    switch (kind) {
        case EItemKind::Menu:
            return ECatalogueKind::Menus;
        case EItemKind::Recipe:
            return ECatalogueKind::Recipes;
        default:
            return ECatalogueKind::Foods;
    }
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

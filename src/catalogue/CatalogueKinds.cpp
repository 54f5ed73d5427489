#include "catalogue/CatalogueKinds.h"

#include <array>

namespace {
constexpr std::array<CCatalogueKind, 4> kKinds = {{
    {ECatalogueKind::Foods, 1, "food", "foods", "Food", 1},
    {ECatalogueKind::Menus, 2, "menu", "menus", "Menu", 3},
    {ECatalogueKind::Recipes, 4, "recipe", "recipes", "Recipe", 3},
    {ECatalogueKind::Exercises, 8, "exercise", "exercises", "Exercise", 1},
}};
}  // namespace

const CCatalogueKind& KindOf(ECatalogueKind kind) {
    return kKinds[static_cast<size_t>(kind)];
}

int CountItems(CDatabase& database, ECatalogueKind kind) {
    CItemDatabaseBase& items = database.Items(kind);
    const bool hasSettings = items.FirstPositionOf(CViewSettings::kMarker) >= 0;
    return items.Count() - (hasSettings ? 1 : 0);
}

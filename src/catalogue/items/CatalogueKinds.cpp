#include "catalogue/items/CatalogueKinds.h"

#include <array>

namespace {
constexpr std::array<CCatalogueKind, 4> kKinds = {{
    {ECatalogueKind::Foods, 1, "food", "foods", "Food"},
    {ECatalogueKind::Menus, 2, "menu", "menus", "Menu"},
    {ECatalogueKind::Recipes, 4, "recipe", "recipes", "Recipe"},
    {ECatalogueKind::Exercises, 8, "exercise", "exercises", "Exercise"},
}};
}  // namespace

const CCatalogueKind& KindOf(ECatalogueKind kind) {
    return kKinds[static_cast<size_t>(kind)];
}

// Menus and recipes with their components, which are stored after all items of their database.
#pragma once

#include <array>
#include <vector>

#include "store/ItemDatabase.h"
#include "store/LeftOut.h"
#include "store/records/ComposedItem.h"

/// `itemId` is the menu's (recipe's) own identifier, under which its components are stored. The
/// two databases outlive it.
class CComposedItems {
  public:
    CComposedItems(CItemDatabase<CMenuItem>& menus, CItemDatabase<CRecipeItem>& recipes)
        : m_menus(menus), m_recipes(recipes) {}

    /// An identifier that no menu (recipe) has and no component refers to.
    qint32 AllocateItemId(ECatalogueKind kind);
    /// In stored order; empty for an identifier that no menu or recipe can have, and when the index
    /// cannot be read: `leftOut`, if given, then gets isUnknown.
    std::vector<int> ComponentPositions(ECatalogueKind kind, qint32 itemId,
                                        CLeftOut* leftOut = nullptr);
    /// Failure shows "Cannot delete record. Error=%d".
    bool DeleteComponents(ECatalogueKind kind, qint32 itemId);
    /// Adds a copy of a menu or recipe under another name, components included: all or nothing.
    bool AddCopy(ECatalogueKind kind, int position, const QString& name);
    /// Deletes a menu or recipe with its components: all or nothing; a failure also undoes a group
    /// around it. Failure shows "Cannot delete record. Error=%d".
    bool Delete(ECatalogueKind kind, int position);
    /// Position of the first record of the menus (recipes) under `parentId` with item type 1 and
    /// that item identifier; -1 when there is none.
    int FindComponent(ECatalogueKind kind, qint32 parentId, qint32 itemId);
    /// Position of the recipe with that identifier; -1 when there is none.
    int FindRecipe(qint32 itemId);
    /// Whether the recipe `itemId` is `wantedId` or contains it, directly or through others.
    bool RecipeContains(qint32 itemId, qint32 wantedId);

    /// Removes components whose menu (recipe) was never stored.
    void RemoveOrphans(ECatalogueKind kind);
    /// Call when the volume is closed: the next one has identifiers of its own.
    void ForgetItemIds() { m_lastItemIds.fill(0); }

  private:
    [[nodiscard]] CItemDatabaseBase& Items(ECatalogueKind kind) const;

    CItemDatabase<CMenuItem>& m_menus;
    CItemDatabase<CRecipeItem>& m_recipes;
    /// Of menus and of recipes: the identifier allocated last; 0 until it has been looked up.
    std::array<qint32, 2> m_lastItemIds{};
};

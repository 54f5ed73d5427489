// The items of the catalogue's four kinds: their databases and the lists read from them.
#pragma once

#include "store/CatalogueLists.h"
#include "store/ItemDatabase.h"
#include "store/records/ComposedItem.h"
#include "store/records/ExerciseItem.h"
#include "store/records/FoodItem.h"

/// Positions are valid until the next change of their database.
class CCatalogue {
  public:
    explicit CCatalogue(CRecordStore& store);

    CItemDatabase<CFoodItem>& Foods() { return m_foods; }
    CItemDatabase<CMenuItem>& Menus() { return m_menus; }
    CItemDatabase<CRecipeItem>& Recipes() { return m_recipes; }
    CItemDatabase<CExerciseItem>& Exlib() { return m_exlib; }
    /// The database of a kind without the item's class: for code that serves all four kinds.
    CItemDatabaseBase& Items(ECatalogueKind kind);
    /// Number of items of a kind, without the settings and components stored after them; with
    /// those when the index cannot be read.
    int CountItems(ECatalogueKind kind);

    /// The items of a category, the first `capacity` of them, sorted by name and type (menus and
    /// recipes by name) without case. A negative identifier gives an empty list.
    CCategoryList FillCategoryList(ECatalogueKind kind, qint32 categoryId,
                                   int capacity = kCatalogueListCapacity);
    /// Distinct item names of a category (-1: of all), the first `capacity` of them, sorted by
    /// category and then by name without case.
    CUniqueNames FillArrayWithUniqueNames(ECatalogueKind kind, qint32 categoryId,
                                          int capacity = kCatalogueListCapacity);
    CUniqueNames FillArrayWithUniqueFoodNames(qint32 categoryId) {
        return FillArrayWithUniqueNames(ECatalogueKind::Foods, categoryId);
    }
    CUniqueNames FillArrayWithUniqueExlibNames(qint32 categoryId) {
        return FillArrayWithUniqueNames(ECatalogueKind::Exercises, categoryId);
    }
    /// The item of a category with exactly that name and type (menus and recipes: name alone);
    /// -1 when there is none. `except` is a position to skip.
    int FindItem(ECatalogueKind kind, qint32 categoryId, const QString& name, const QString& type,
                 int except = -1);

  private:
    CItemDatabase<CFoodItem> m_foods;
    CItemDatabase<CMenuItem> m_menus;
    CItemDatabase<CRecipeItem> m_recipes;
    CItemDatabase<CExerciseItem> m_exlib;
};

/// As FillCategoryList sorts.
void SortByNameAndType(ECatalogueKind kind, std::vector<CCategoryListEntry>& entries);

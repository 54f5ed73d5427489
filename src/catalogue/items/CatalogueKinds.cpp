#include "catalogue/items/CatalogueKinds.h"

namespace {
constexpr std::array<CCatalogueKind, 4> kKinds = {{
    {
        .code = ECatalogueKind::Foods,
        .itemKind = EItemKind::Food,
        .words = {.one = "food", .many = "foods"},
        .capitalized = "Food",
        .commandGroup = "foods",
        .commands =
            {
                .importItems = "Import foods...",
                .exportItems = "Export foods...",
                .close = "Close foods",
                .deleteCategoryPopUp = "Delete category...",
                .renameItems = "Rename food name",
                .newItem = "New food...",
                .editItem = "Edit food...",
                .deleteItems = "Delete food...",
                .moveItems = "Move food...",
                .duplicateItem = "Duplicate food...",
                .find = "Find food...",
                .findNext = "Find next food",
            },
        .tips =
            {
                .newCategory = "Create new foods category",
                .newItem = "Create new food",
                .find = "Find food",
                .findNext = "Find next food",
            },
        .view =
            {
                .switchTo = kSwitchToFoods,
                .menuText = "Foods...",
                .closeTo = kSwitchToDiet,
                .empty = "There are no foods yet.\nImport a file, or create a category and put "
                         "your first food into it.",
            },
        .settings =
            {
                .confirmServingChange = 0,
                .namesInTree = 1,
                .splitterPerMille = 2,
                .starterOffered = 3,
            },
        .category =
            {
                .newName = "New food category",
                .confirmDelete = "Are you sure you want to delete category '%s' and all foods "
                                 "associated with this category?",
                .cannotEmpty = "Cannot delete foods from category.",
                .noneForItem = "Please create a category before adding new food.",
            },
        .rename =
            {
                .noNames = "There are no foods selected.",
                .noNameSelected = "Please select foods to rename.",
                .noNewName = "Please enter foods name.",
                .cannotRename = "Cannot rename foods.",
            },
        .item =
            {
                .noName = "Please enter food name",
                .noType = "Please enter food type",
                .exists = "Food '%s, %s' already exists in category '%s'.",
                .edit = {.none = "Please select food to edit.",
                         .several = "Please select only one food to edit."},
                .cannotAdd = "Cannot add new food.",
                .cannotUpdate = "Cannot update food.",
                .remove = {.none = "Please select food to delete."},
                .confirmDelete = {.one = "Are you sure you want to delete food '%s, %s'?",
                                  .several = "Are you sure you want to delete %d foods?"},
                .cannotDelete = "Cannot delete food.",
                .move = {.none = "Please select food to move."},
                .onlyOneCategory = "Cannot move food, there is only one category.",
                .movePickerTitle = "Select category to move foods:",
                .confirmMove = {.one =
                                    "Are you sure you want to move food '%s, %s' to category %s'?",
                                .several =
                                    "Are you sure you want to move %d foods to category '%s'?"},
                .cannotMove = "Cannot move food '%s, %s' to category %s'.",
                .duplicate = {.none = "Please select food to duplicate.",
                              .several = "Please select only one food to duplicate."},
                .confirmDuplicate = "Do you want to create a copy of food '%s, %s'?",
                .findPrompt = "Please enter food name and/or type:",
                .notFound = "Food not found.",
                .cannotLoad = "Cannot load food.",
            },
        .exchange =
            {
                .marker = "<Foods>",
                .columns = "NDB_No,Category,Food name,Food type",
                .invalidName = "Invalid food name in line %d. Skipped.",
                .invalidType = "Invalid food type in line %d. Skipped.",
                .afterFailure = "Import stopped.",
                .doNotCheck = "Do not check",
                .lineNumberShift = 1,
            },
    },
    {
        .code = ECatalogueKind::Menus,
        .itemKind = EItemKind::Menu,
        .words = {.one = "menu", .many = "menus"},
        .capitalized = "Menu",
        .commandGroup = "menus",
        .commands =
            {
                .importItems = "Import menus...",
                .exportItems = "Export menus...",
                .close = "Close menus",
                .deleteCategoryPopUp = "Delete category...",
                .newItem = "New menu...",
                .editItem = "Edit menu...",
                .deleteItems = "Delete menu...",
                .moveItems = "Move menu...",
                .duplicateItem = "Duplicate menu...",
                .find = "Find menu...",
                .findNext = "Find next menu",
            },
        .tips =
            {
                .newCategory = "Create new menus category",
                .newItem = "Create new menu",
                .find = "Find menu",
                .findNext = "Find next menu",
            },
        .view =
            {
                .switchTo = kSwitchToMenus,
                .menuText = "Menus...",
                .closeTo = kSwitchToDiet,
                .empty = "There are no menus yet.\nCreate a category and put your first menu into "
                         "it: foods and recipes that you often eat together.",
            },
        .category =
            {
                .newName = "New menus category",
                .confirmDelete = "Are you sure you want to delete category '%s' and all menus "
                                 "associated with this category?",
                .cannotEmpty = "Cannot delete foods from category.",
                .noneForItem = "Please create category before adding new menu.",
            },
        .item =
            {
                .noName = "Please enter menu name",
                .exists = "Menu '%s' already exists in category '%s'.",
                .edit = {.none = "Please select menu to edit.",
                         .several = "Please select only one menu to edit."},
                .cannotAdd = "Cannot add new menu.",
                .cannotUpdate = "Cannot update menu.",
                .remove = {.none = "Please select menu to delete."},
                .confirmDelete = {.one = "Are you sure you want to delete menu '%s'?",
                                  .several = "Are you sure you want to delete %d menus?"},
                .cannotDelete = "Cannot delete menu.",
                .move = {.none = "Please select menu to move."},
                .onlyOneCategory = "Cannot move menu, there is only one category.",
                .movePickerTitle = "Select category to move menu:",
                .confirmMove = {.one = "Are you sure you want to move menu '%s' to category %s'?",
                                .several =
                                    "Are you sure you want to move %d menus to category '%s'?"},
                .cannotMove = "Cannot move menu '%s' to category %s'.",
                .duplicate = {.none = "Please select menu to duplicate.",
                              .several = "Please select only one menu to duplicate."},
                .confirmDuplicate = "Do you want to create a copy of menu '%s'?",
                .findPrompt = "Please enter menu name:",
                .notFound = "Menu not found.",
                .cannotLoad = "Cannot load menu.",
            },
        .component =
            {
                .confirmDelete = {.one = "Are you sure you want to delete food '%s' from menu?",
                                  .several = "Are you sure you want to delete %d foods from menu?"},
                .recalculate = "Recalculate menu nutrients from foods",
            },
        .exchange =
            {
                .marker = "<Menus>",
                .columns = "NDB_No,Item type,Category,Menu name,Food name",
                .itemType = "Menu",
                .invalidName = "Invalid menu name in line %d. Skipped.",
                .noOwner = "Cannot find menu for food in line %d. Skipped.",
                .afterFailure = "Too many errors. Import stopped.",
                .doNotCheck = "Do not check",
                .hidesProgress = true,
            },
    },
    {
        .code = ECatalogueKind::Recipes,
        .itemKind = EItemKind::Recipe,
        .words = {.one = "recipe", .many = "recipes"},
        .capitalized = "Recipe",
        .commandGroup = "recipes",
        .commands =
            {
                .importItems = "Import recipes...",
                .exportItems = "Export recipes...",
                .close = "Close recipes",
                .deleteCategoryPopUp = "Delete category...",
                .newItem = "New recipe...",
                .editItem = "Edit recipe...",
                .deleteItems = "Delete recipe...",
                .moveItems = "Move recipe...",
                .duplicateItem = "Duplicate recipe...",
                .find = "Find recipe...",
                .findNext = "Find next recipe",
            },
        .tips =
            {
                .newCategory = "Create new recipes category",
                .newItem = "Create new recipe",
                .find = "Find recipe",
                .findNext = "Find next recipe",
            },
        .view =
            {
                .switchTo = kSwitchToRecipes,
                .menuText = "Recipes...",
                .closeTo = kSwitchToDiet,
                .empty = "There are no recipes yet.\nCreate a category and put your first recipe "
                         "into it: a dish made of foods.",
            },
        .category =
            {
                .newName = "New recipes category",
                .confirmDelete = "Are you sure you want to delete category '%s' and all recipes "
                                 "associated with this category?",
                .cannotEmpty = "Cannot delete foods from category.",
                .noneForItem = "Please create category before adding new recipe.",
            },
        .item =
            {
                .noName = "Please enter recipe name",
                .exists = "Recipe '%s' already exists in category '%s'.",
                .edit = {.none = "Please select recipe to edit.",
                         .several = "Please select only one recipe to edit."},
                .cannotAdd = "Cannot add new recipe.",
                .cannotUpdate = "Cannot update recipe.",
                .remove = {.none = "Please select recipe to delete."},
                .confirmDelete = {.one = "Are you sure you want to delete recipe '%s'?",
                                  .several = "Are you sure you want to delete %d recipes?"},
                .cannotDelete = "Cannot delete recipe.",
                .move = {.none = "Please select recipe to move."},
                .onlyOneCategory = "Cannot move recipe, there is only one category.",
                .movePickerTitle = "Select category to move recipe:",
                .confirmMove = {.one = "Are you sure you want to move recipe '%s' to category %s'?",
                                .several =
                                    "Are you sure you want to move %d recipes to category '%s'?"},
                .cannotMove = "Cannot move recipe '%s' to category %s'.",
                .duplicate = {.none = "Please select recipe to duplicate.",
                              .several = "Please select only one recipe to duplicate."},
                .confirmDuplicate = "Do you want to create a copy of recipe '%s'?",
                .findPrompt = "Please enter recipe name:",
                .notFound = "Recipe not found.",
                .cannotLoad = "Cannot load recipe.",
            },
        .component =
            {
                .confirmDelete = {.one = "Are you sure you want to delete food '%s' from recipe?",
                                  .several =
                                      "Are you sure you want to delete %d foods from recipe?"},
                .recalculate = "Recalculate recipe nutrients from foods",
            },
        .exchange =
            {
                .marker = "<Recipes>",
                .columns = "NDB_No,Item type,Category,Recipe name,Food name",
                .itemType = "Recipe",
                .invalidName = "Invalid recipe name in line %d. Skipped.",
                .noOwner = "Cannot find recipe for food in line %d. Skipped.",
                .afterFailure = "Too many errors. Import stopped.",
                .doNotCheck = "Do not check",
                .hidesProgress = true,
            },
    },
    {
        .code = ECatalogueKind::Exercises,
        .words = {.one = "exercise", .many = "exercises"},
        .capitalized = "Exercise",
        .commandGroup = "exlib",
        .commands =
            {
                .importItems = "Import exercises...",
                .exportItems = "Export exercises...",
                .close = "Close exercises",
                .deleteCategoryPopUp = "Delete category",
                .renameItems = "Rename exercises",
                .newItem = "New exercise...",
                .editItem = "Edit exercise...",
                .deleteItems = "Delete exercise...",
            },
        .tips =
            {
                .newCategory = "Create new exercises category",
                .newItem = "Create new exercise",
            },
        .view =
            {
                .switchTo = kSwitchToExlib,
                .menuText = "Exercises...",
                .closeTo = kSwitchToExercises,
                .empty = "There are no exercises yet.\nImport a file, or create a category and put "
                         "your first exercise into it.",
            },
        .settings =
            {
                .namesInTree = 0,
                .splitterPerMille = 1,
            },
        .category =
            {
                .newName = "New exercise category",
                .confirmDelete = "Are you sure you want to delete category '%s' and all exercises "
                                 "associated with this category?",
                .cannotEmpty = "Cannot delete exercises from category.",
                .noneForItem = "Please create a category before adding new exercise.",
            },
        .rename =
            {
                .noNames = "There is no exercise selected.",
                .noNameSelected = "Please select exercise to rename.",
                .noNewName = "Please enter exercise name.",
                .cannotRename = "Cannot rename exercise.",
            },
        .item =
            {
                .noName = "Please enter exercise name",
                .noType = "Please enter exercise type",
                .exists = "Exercise '%s, %s' already exists in category '%s'.",
                .edit = {.none = "Please select exercise to edit.",
                         .several = "Please select only one exercise to edit."},
                .cannotAdd = "Cannot add new exercise.",
                .cannotUpdate = "Cannot add new exercise.",
                .remove = {.none = "Please select exercise to delete."},
                .confirmDelete = {.one = "Are you sure you want to delete exercise '%s, %s'?",
                                  .several = "Are you sure you want to delete %d exercises?"},
                .cannotDelete = "Cannot delete exercise.",
                .notFound = "Exercise not found.",
                .cannotLoad = "Cannot load exercise.",
            },
        .exchange =
            {
                .marker = "<Exercises>",
                .columns = "NDB_No,Category,Exercise name,Exercise type",
                .invalidName = "Invalid exercise name in line %d. Skipped.",
                .invalidType = "Invalid exercise type in line %d. Skipped.",
                .afterFailure = "Import stopped.",
                .doNotCheck = "Don't check",
                .lineNumberShift = 1,
                .countsCancelled = false,
                .exportsListedRows = true,
            },
    },
}};

constexpr bool IsInOrderOfCodes() {
    size_t row = 0;
    for (const CCatalogueKind& kind : kKinds) {
        if (static_cast<size_t>(kind.code) != row++) {
            return false;
        }
    }
    return true;
}
static_assert(IsInOrderOfCodes());
}  // namespace

const std::array<CCatalogueKind, 4>& CatalogueKinds() {
    return kKinds;
}

const CCatalogueKind& KindOf(ECatalogueKind kind) {
    return kKinds[static_cast<size_t>(kind)];
}

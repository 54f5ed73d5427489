// What one kind of the catalogue says: commands, tips, messages. The views differ in nothing else
// but their item dialog, the command line in nothing at all.
#pragma once

#include "app/ListCommands.h"
#include "store/records/Category.h"

inline constexpr QLatin1StringView kNoCategorySelected("There is no category selected.");

struct CCatalogueTexts {
    ECatalogueKind kind;

    // Commands.
    const char* importItems;
    const char* exportItems;
    const char* close;
    const char* deleteCategoryPopUp;  ///< in the pop-up menu of the tree
    const char* renameItems;          ///< null where the tree shows no names
    const char* newItem;
    const char* editItem;
    const char* deleteItems;
    const char* moveItems;
    const char* duplicateItem;
    const char* find;  ///< null, like all about it, where the kind has no such command
    const char* findNext;

    // Tips of the tool buttons.
    const char* newCategoryTip;
    const char* newItemTip;
    const char* findTip;
    const char* findNextTip;

    // Messages on categories.
    const char* newCategoryName;
    const char* confirmDeleteCategory;
    const char* cannotEmptyCategory;
    const char* noCategoryForItem;

    // Messages on renaming the items of a name.
    const char* noNames;  ///< the tree is empty
    const char* noNameSelected;
    const char* noNewName;
    const char* cannotRename;

    // Messages on items. Where an item is named, foods bring name and type, the others the name.
    CSelectionTexts edit;
    const char* cannotAdd;
    const char* cannotUpdate;
    CSelectionTexts remove;
    CConfirmTexts confirmDelete;
    const char* cannotDelete;
    CSelectionTexts move;
    const char* onlyOneCategory;
    const char* movePickerTitle;
    CConfirmTexts confirmMove;  ///< with the category's name last
    const char* cannotMove;     ///< with the category's name last
    CSelectionTexts duplicate;
    const char* confirmDuplicate;
    const char* findPrompt;
    const char* notFound;
    const char* cannotLoad;

    // An empty catalogue.
    const char* empty;
};

inline constexpr CCatalogueTexts kFoodsTexts = {
    ECatalogueKind::Foods,

    "Import foods...",
    "Export foods...",
    "Close foods",
    "Delete category...",
    "Rename food name",
    "New food...",
    "Edit food...",
    "Delete food...",
    "Move food...",
    "Duplicate food...",
    "Find food...",
    "Find next food",

    "Create new foods category",
    "Create new food",
    "Find food",
    "Find next food",

    "New food category",
    "Are you sure you want to delete category '%s' and all foods associated with this category?",
    "Cannot delete foods from category.",
    "Please create a category before adding new food.",

    "There are no foods selected.",
    "Please select foods to rename.",
    "Please enter foods name.",
    "Cannot rename foods.",

    {"Please select food to edit.", "Please select only one food to edit."},
    "Cannot add new food.",
    "Cannot update food.",
    {"Please select food to delete.", nullptr},
    {"Are you sure you want to delete food '%s, %s'?", "Are you sure you want to delete %d foods?"},
    "Cannot delete food.",
    {"Please select food to move.", nullptr},
    "Cannot move food, there is only one category.",
    "Select category to move foods:",
    {"Are you sure you want to move food '%s, %s' to category %s'?",
     "Are you sure you want to move %d foods to category '%s'?"},
    "Cannot move food '%s, %s' to category %s'.",
    {"Please select food to duplicate.", "Please select only one food to duplicate."},
    "Do you want to create a copy of food '%s, %s'?",
    "Please enter food name and/or type:",
    "Food not found.",
    "Cannot load food.",

    "There are no foods yet.\nImport a file, or create a category and put your first food into it.",
};

inline constexpr CCatalogueTexts kMenusTexts = {
    ECatalogueKind::Menus,

    "Import menus...",
    "Export menus...",
    "Close menus",
    "Delete category...",
    nullptr,
    "New menu...",
    "Edit menu...",
    "Delete menu...",
    "Move menu...",
    "Duplicate menu...",
    "Find menu...",
    "Find next menu",

    "Create new menus category",
    "Create new menu",
    "Find menu",
    "Find next menu",

    "New menus category",
    "Are you sure you want to delete category '%s' and all menus associated with this category?",
    "Cannot delete foods from category.",
    "Please create category before adding new menu.",

    nullptr,
    nullptr,
    nullptr,
    nullptr,

    {"Please select menu to edit.", "Please select only one menu to edit."},
    "Cannot add new menu.",
    "Cannot update menu.",
    {"Please select menu to delete.", nullptr},
    {"Are you sure you want to delete menu '%s'?", "Are you sure you want to delete %d menus?"},
    "Cannot delete menu.",
    {"Please select menu to move.", nullptr},
    "Cannot move menu, there is only one category.",
    "Select category to move menu:",
    {"Are you sure you want to move menu '%s' to category %s'?",
     "Are you sure you want to move %d menus to category '%s'?"},
    "Cannot move menu '%s' to category %s'.",
    {"Please select menu to duplicate.", "Please select only one menu to duplicate."},
    "Do you want to create a copy of menu '%s'?",
    "Please enter menu name:",
    "Menu not found.",
    "Cannot load menu.",

    "There are no menus yet.\nCreate a category and put your first menu into it: foods and recipes "
    "that you often eat together.",
};

inline constexpr CCatalogueTexts kRecipesTexts = {
    ECatalogueKind::Recipes,

    "Import recipes...",
    "Export recipes...",
    "Close recipes",
    "Delete category...",
    nullptr,
    "New recipe...",
    "Edit recipe...",
    "Delete recipe...",
    "Move recipe...",
    "Duplicate recipe...",
    "Find recipe...",
    "Find next recipe",

    "Create new recipes category",
    "Create new recipe",
    "Find recipe",
    "Find next recipe",

    "New recipes category",
    "Are you sure you want to delete category '%s' and all recipes associated with this category?",
    "Cannot delete foods from category.",
    "Please create category before adding new recipe.",

    nullptr,
    nullptr,
    nullptr,
    nullptr,

    {"Please select recipe to edit.", "Please select only one recipe to edit."},
    "Cannot add new recipe.",
    "Cannot update recipe.",
    {"Please select recipe to delete.", nullptr},
    {"Are you sure you want to delete recipe '%s'?", "Are you sure you want to delete %d recipes?"},
    "Cannot delete recipe.",
    {"Please select recipe to move.", nullptr},
    "Cannot move recipe, there is only one category.",
    "Select category to move recipe:",
    {"Are you sure you want to move recipe '%s' to category %s'?",
     "Are you sure you want to move %d recipes to category '%s'?"},
    "Cannot move recipe '%s' to category %s'.",
    {"Please select recipe to duplicate.", "Please select only one recipe to duplicate."},
    "Do you want to create a copy of recipe '%s'?",
    "Please enter recipe name:",
    "Recipe not found.",
    "Cannot load recipe.",

    "There are no recipes yet.\nCreate a category and put your first recipe into it: a dish made "
    "of foods.",
};

inline constexpr CCatalogueTexts kExercisesTexts = {
    ECatalogueKind::Exercises,

    "Import exercises...",
    "Export exercises...",
    "Close exercises",
    "Delete category",
    "Rename exercises",
    "New exercise...",
    "Edit exercise...",
    "Delete exercise...",
    nullptr,
    nullptr,
    nullptr,
    nullptr,

    "Create new exercises category",
    "Create new exercise",
    nullptr,
    nullptr,

    "New exercise category",
    "Are you sure you want to delete category '%s' and all exercises associated with this "
    "category?",
    "Cannot delete exercises from category.",
    "Please create a category before adding new exercise.",

    "There is no exercise selected.",
    "Please select exercise to rename.",
    "Please enter exercise name.",
    "Cannot rename exercise.",

    {"Please select exercise to edit.", "Please select only one exercise to edit."},
    "Cannot add new exercise.",
    "Cannot add new exercise.",
    {"Please select exercise to delete.", nullptr},
    {"Are you sure you want to delete exercise '%s, %s'?",
     "Are you sure you want to delete %d exercises?"},
    "Cannot delete exercise.",
    {nullptr, nullptr},
    nullptr,
    nullptr,
    {nullptr, nullptr},
    nullptr,
    {nullptr, nullptr},
    nullptr,
    nullptr,
    "Exercise not found.",
    "Cannot load exercise.",

    "There are no exercises yet.\nImport a file, or create a category and put your first exercise "
    "into it.",
};

/// The texts of a kind.
constexpr const CCatalogueTexts& CatalogueTextsOf(ECatalogueKind kind) {
    switch (kind) {
        case ECatalogueKind::Menus:
            return kMenusTexts;
        case ECatalogueKind::Recipes:
            return kRecipesTexts;
        case ECatalogueKind::Exercises:
            return kExercisesTexts;
        case ECatalogueKind::Foods:
            break;
    }
    return kFoodsTexts;
}

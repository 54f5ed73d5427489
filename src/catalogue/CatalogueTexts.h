// What one catalogue view says: commands, tips, messages. The views differ in nothing else but
// their item dialog.
#pragma once

#include "app/ListCommands.h"
#include "store/Category.h"

struct CCatalogueTexts {
    ECatalogueKind kind;

    // Commands.
    const char* importItems;
    const char* exportItems;
    const char* close;
    const char* newItem;
    const char* editItem;
    const char* deleteItems;
    const char* find;
    const char* findNext;

    // Tips of the tool buttons.
    const char* newCategoryTip;
    const char* newItemTip;
    const char* findTip;
    const char* findNextTip;

    // Messages.
    const char* newCategoryName;
    const char* noCategoryForItem;
    CSelectionTexts edit;
    CSelectionTexts remove;
    CConfirmTexts confirmDelete;
    const char* cannotAdd;
    const char* cannotUpdate;
    const char* cannotDelete;
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
    "New food...",
    "Edit food...",
    "Delete food...",
    "Find food...",
    "Find next food",

    "Create new foods category",
    "Create new food",
    "Find food",
    "Find next food",

    "New food category",
    "Please create a category before adding new food.",
    {"Please select food to edit.", "Please select only one food to edit."},
    {"Please select food to delete.", nullptr},
    {"Are you sure you want to delete food '%s, %s'?", "Are you sure you want to delete %d foods?"},
    "Cannot add new food.",
    "Cannot update food.",
    "Cannot delete food.",
    "Please enter food name and/or type:",
    "Food not found.",
    "Cannot load food.",

    "There are no foods yet.\nImport a file, or create a category and put your first food into it.",
};

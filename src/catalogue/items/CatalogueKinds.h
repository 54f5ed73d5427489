// What differs between the kinds of the catalogue: one table with one row per kind. How their
// records are stored is in CCatalogueLayout, see CCatalogueKind::Layout.
#pragma once

#include <array>
#include <optional>

#include "app/FrameCommands.h"
#include "app/LeftOutText.h"
#include "app/ListCommands.h"
#include "store/records/CatalogueItem.h"

inline constexpr QLatin1StringView kNoCategorySelected("There is no category selected.");

// Fields without a default must be set for every kind.

/// The texts of the view's commands. A kind without a command has null here and in all texts about
/// it.
struct CKindCommands {
    const char* importItems;
    const char* exportItems;
    const char* close;
    const char* deleteCategoryPopUp;    ///< in the pop-up menu of the tree
    const char* renameItems = nullptr;  ///< null when the tree shows no names
    const char* newItem;
    const char* editItem;
    const char* deleteItems;
    const char* moveItems = nullptr;
    const char* duplicateItem = nullptr;
    const char* find = nullptr;
    const char* findNext = nullptr;
};

/// Tips of the tool buttons.
struct CKindTips {
    const char* newCategory;
    const char* newItem;
    const char* find = nullptr;
    const char* findNext = nullptr;
};

/// How to get to and from the view, and its text for an empty catalogue.
struct CKindView {
    EFrameCommand switchTo;  ///< opens the view
    const char* menuText;    ///< of that command in the other views
    EFrameCommand closeTo;   ///< opens the view that is shown when this one is closed
    const char* empty;
};

/// Indexes of the view's settings among the six of the record; -1 for settings that the kind does
/// not have.
struct CSettingPlaces {
    int confirmServingChange = -1;
    int namesInTree = -1;
    int splitterPerMille = -1;
    int starterOffered = -1;
};

/// Messages about categories.
struct CCategoryTexts {
    const char* newName;
    const char* confirmDelete;
    const char* cannotEmpty;
    const char* noneForItem;
};

/// Messages about renaming all items of a name.
struct CRenameTexts {
    const char* noNames = nullptr;  ///< the tree is empty
    const char* noNameSelected = nullptr;
    const char* noNewName = nullptr;
    const char* cannotRename = nullptr;
};

/// Messages about items. Where a message names an item, its arguments are name and type for kinds
/// with types, otherwise the name.
struct CItemTexts {
    const char* noName;
    const char* noType = nullptr;
    const char* exists;  ///< the last argument is the category's name
    CSelectionTexts edit;
    const char* cannotAdd;
    const char* cannotUpdate;
    CSelectionTexts remove;
    CConfirmTexts confirmDelete;
    const char* cannotDelete;
    CSelectionTexts move = {};
    const char* onlyOneCategory = nullptr;
    const char* movePickerTitle = nullptr;
    CConfirmTexts confirmMove = {};    ///< the last argument is the category's name
    const char* cannotMove = nullptr;  ///< the last argument is the category's name
    CSelectionTexts duplicate = {};
    const char* confirmDuplicate = nullptr;
    const char* findPrompt = nullptr;
    const char* notFound;
    const char* cannotLoad;
};

/// Texts about the components of a menu or recipe.
struct CComponentTexts {
    CConfirmTexts confirmDelete = {};
    const char* recalculate = nullptr;
};

/// The texts and differences of a kind's import and export.
struct CKindExchange {
    const char* marker;              ///< first line of the kind's section
    const char* columns;             ///< titles of the first columns, through the names
    const char* itemType = nullptr;  ///< second field in the line of a menu (recipe) itself
    const char* invalidName;         ///< "%d" is the line number, also in the next two
    const char* invalidType = nullptr;
    const char* noOwner = nullptr;  ///< a component without its menu (recipe)
    const char* afterFailure;       ///< shown after an item could not be stored
    const char* doNotCheck;         ///< an option of an import
    /// Added to line numbers, counted from 1, in messages: some kinds have always named the line
    /// after the wrong one.
    int lineNumberShift = 0;
    bool hidesProgress = false;      ///< while a message is shown
    bool countsCancelled = true;     ///< a cancelled export also shows how many items it wrote
    bool exportsListedRows = false;  ///< "current category" exports only the rows listed
};

struct CCatalogueKind {
    ECatalogueKind code;
    std::optional<EItemKind> itemKind = {};  ///< in diary entries and components
    CListWords words;                        ///< "food" and "foods"
    const char* capitalized;                 ///< "Food"
    const char* commandGroup;                ///< on the command line
    CKindCommands commands;
    CKindTips tips;
    CKindView view;
    CSettingPlaces settings = {};
    CCategoryTexts category;
    CRenameTexts rename = {};
    CItemTexts item;
    CComponentTexts component = {};
    CKindExchange exchange;

    [[nodiscard]] const CCatalogueLayout& Layout() const { return CatalogueLayoutOf(code); }
};

/// All kinds in the order of their codes.
const std::array<CCatalogueKind, 4>& CatalogueKinds();
const CCatalogueKind& KindOf(ECatalogueKind kind);

// What differs between the kinds of the catalogue: one table with a row a kind. How their records
// are stored differs, too, see CCatalogueLayout; the rows lead there.
#pragma once

#include <array>
#include <optional>

#include "app/FrameCommands.h"
#include "app/LeftOutText.h"
#include "app/ListCommands.h"
#include "store/records/CatalogueItem.h"

inline constexpr QLatin1StringView kNoCategorySelected("There is no category selected.");

// A field without a default is one that every kind has to fill.

/// The commands of the view. Null, like all texts about it, where the kind has no such command.
struct CKindCommands {
    const char* importItems;
    const char* exportItems;
    const char* close;
    const char* deleteCategoryPopUp;    ///< in the pop-up menu of the tree
    const char* renameItems = nullptr;  ///< null where the tree shows no names
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

/// The view among the others, and what it shows of an empty catalogue.
struct CKindView {
    EFrameCommand switchTo;  ///< opens the view
    const char* menuText;    ///< of that command in the other views
    EFrameCommand closeTo;   ///< opens the view that closing this one leads to
    const char* empty;
};

/// Where the view's settings keep their values among the six of the record; -1 where the kind has
/// no such value.
struct CSettingPlaces {
    int confirmServingChange = -1;
    int namesInTree = -1;
    int splitterPerMille = -1;
    int starterOffered = -1;
};

/// Messages on categories.
struct CCategoryTexts {
    const char* newName;
    const char* confirmDelete;
    const char* cannotEmpty;
    const char* noneForItem;
};

/// Messages on renaming the items of a name.
struct CRenameTexts {
    const char* noNames = nullptr;  ///< the tree is empty
    const char* noNameSelected = nullptr;
    const char* noNewName = nullptr;
    const char* cannotRename = nullptr;
};

/// Messages on items. Where an item is named, the kinds with types bring name and type, the others
/// the name.
struct CItemTexts {
    const char* noName;
    const char* noType = nullptr;
    const char* exists;  ///< with the category's name last
    CSelectionTexts edit;
    const char* cannotAdd;
    const char* cannotUpdate;
    CSelectionTexts remove;
    CConfirmTexts confirmDelete;
    const char* cannotDelete;
    CSelectionTexts move = {};
    const char* onlyOneCategory = nullptr;
    const char* movePickerTitle = nullptr;
    CConfirmTexts confirmMove = {};    ///< with the category's name last
    const char* cannotMove = nullptr;  ///< with the category's name last
    CSelectionTexts duplicate = {};
    const char* confirmDuplicate = nullptr;
    const char* findPrompt = nullptr;
    const char* notFound;
    const char* cannotLoad;
};

/// What a menu or recipe says of its components.
struct CComponentTexts {
    CConfirmTexts confirmDelete = {};
    const char* recalculate = nullptr;
};

/// The exchange: what the kind is called in a file, and where its runs differ.
struct CKindExchange {
    const char* marker;              ///< the line that its section begins with
    const char* columns;             ///< the first ones, through the names
    const char* itemType = nullptr;  ///< of a menu's (recipe's) own line
    const char* invalidName;         ///< with "%d" for the line number, like those below
    const char* invalidType = nullptr;
    const char* noOwner = nullptr;  ///< of a component
    const char* afterFailure;       ///< said after an item that could not be stored
    const char* doNotCheck;         ///< the option of an import
    /// Added to a line's position in the file, counted from 1: some kinds have always named the
    /// line after the offending one.
    int lineNumberShift = 0;
    bool hidesProgress = false;      ///< while each of its messages shows
    bool countsCancelled = true;     ///< a cancelled export still says how many it wrote
    bool exportsListedRows = false;  ///< "current category" is what the list shows of it, not all
};

struct CCatalogueKind {
    ECatalogueKind code;
    std::optional<EItemKind> itemKind = {};  ///< of what diaries and components take from it
    CListWords words;                        ///< "food" and "foods"
    const char* capitalized;                 ///< "Food"
    const char* commandGroup;                ///< of the command line
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

// What tells the four kinds of the catalogue apart: one table of codes and words.
#pragma once

#include "store/Database.h"

/// Words, codes and record layout of one kind.
struct CCatalogueKind {
    ECatalogueKind kind;
    int exchangeCode;      ///< bit in the options dialogs: 1 foods, 2 menus, 4 recipes, 8 exercises
    const char* singular;  ///< "food"
    const char* plural;    ///< "foods"
    const char* capitalized;  ///< "Food"
};

const CCatalogueKind& KindOf(ECatalogueKind kind);

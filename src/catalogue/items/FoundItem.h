// The items that a search has found, as lists show them.
#pragma once

#include <optional>

#include "store/Database.h"

/// One item of the catalogue.
struct CFoundItem {
    ECatalogueKind kind = ECatalogueKind::Foods;
    ObjectId record = 0;
    QString category;
    QString name;
    QString type;
    QString serving;        ///< the first one; empty for an exercise
    double energyKcal = 0;  ///< of that serving; for an exercise of a minute, 0 when it has a MET
    double met = 0;
};

/// Nothing when the record is gone or cannot be read.
std::optional<CFoundItem> ReadFoundItem(CDatabase& database, const CSearchMatch& match);

/// A stored value for an amount of servings. Foods are stored per 100 g unless their serving weighs
/// nothing; `weightGrams` is 0 for menus and recipes.
double ValueOfServings(double value, double amount, double weightGrams);

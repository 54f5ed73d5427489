// Import of a FoodData Central download: a folder of CSV tables.
#pragma once

#include "catalogue/exchange/CsvExchange.h"
#include "catalogue/tables/FoodTypes.h"

struct CFoodTablesRequest {
    QString folder;
    EDuplicatePolicy policy = EDuplicatePolicy::Skip;  ///< for foods that were there before
    int foodTypes = kAllFoodTypes;                     ///< a set of them
    /// Amounts of nutrients in memory at once, at 9 bytes each. When a download has more, its
    /// tables are read again for each further part of its foods.
    qint64 mostAmounts = 13'000'000;
};

/// Adds the foods of a download to the catalogue as one step of the history:
///  - description, cut at its first comma, as name and type; branded foods with their brand
///  - amounts of 100 g, or of 100 ml with a mark in the type; foods without energy are left out
///  - portions as servings, and "100 gm"
///  - all foods of the same category, name and type, the later ones with their number in the type
///
/// All tables are checked whole before the first food is stored. Shows all messages and a summary
/// with what was left out. False when the tables cannot be read, after a cancel and after a failed
/// write; foods stored before that stay stored.
bool ImportFoodTables(CDatabase& database, const CFoodTablesRequest& request);

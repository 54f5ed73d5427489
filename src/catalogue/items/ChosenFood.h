// A food, menu or recipe chosen from the catalogue, with serving, amount and time.
#pragma once

#include <QTime>

#include "store/Database.h"

/// The serving of what has no other: menus, custom entries, new entries.
inline constexpr QLatin1StringView kOneServing{"1 serving"};
/// An amount must be greater.
inline constexpr double kLeastAmount = 0.001;

/// An item whose nutrient values are already the totals for the amount.
struct CChosenFood {
    EItemKind kind = EItemKind::Food;
    QTime time;
    double amount = 1.0;  ///< number of servings
    /// Serving 0 holds the serving's name and, in its weight slot, the amount.
    CFoodItem item;
    /// Position of the catalogue item picked last; -1 when none was.
    int cataloguePosition = -1;
};

/// The catalogue kind of an entry's kind; foods for an invalid one.
ECatalogueKind CatalogueOf(EItemKind kind);

/// An entry as an item. The category identifier is -1 when the catalogue no longer has a category
/// of the entry's category name.
CFoodItem ItemFromEntry(CDatabase& database, const CDietEntry& entry);

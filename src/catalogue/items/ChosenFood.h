// A food, menu or recipe taken from the catalogue, and what a diary entry adds to it.
#pragma once

#include <QTime>

#include "store/Database.h"

/// What one serving or several of an item bring: a catalogue item whose values are already the
/// totals for the amount.
struct CChosenFood {
    EItemKind kind = EItemKind::Food;
    QTime time;
    double amount = 1.0;  ///< number of servings
    /// Serving 0 holds the serving's name and, in its weight slot, the amount.
    CFoodItem item;
    /// Of the catalogue item that was picked last; -1 when none was.
    int cataloguePosition = -1;
};

/// The catalogue that an entry's kind comes from; foods for a damaged one.
ECatalogueKind CatalogueOf(EItemKind kind);

/// The catalogue item that stands for an entry. The category identifier is -1 when the catalogue
/// has no category of the entry's category name any more.
CFoodItem ItemFromEntry(CDatabase& database, const CDietEntry& entry);

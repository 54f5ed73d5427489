// The commands of the diet diary without their windows: which message for which input, what is
// asked, what is stored.
#pragma once

#include "app/VelmoraDoc.h"
#include "catalogue/items/ChosenFood.h"

/// Where and when entries go.
struct CDietPlace {
    FileTime moment = 0;
    qint32 meal = 0;
};

/// Takes kind, names, values, serving and amount over; moment and meal stay. An item without a
/// category (identifier -1) leaves the entry's category name as it was.
void TakeChosenFood(CDatabase& database, const CChosenFood& food, CDietEntry& entry);

/// False after a message when entries cannot be added to that meal selector.
bool MayAddToMeal(int meal);
/// Appends an entry. Failure shows "Cannot add entry.".
bool AddDietEntry(CVelmoraDoc& doc, QDate day, qint32 meal, const CChosenFood& food);

/// False after a message unless exactly one entry is selected.
bool MayEdit(int selected);
/// Rewrites the record with the food; date and meal stay. Failure shows "Cannot add entry.".
bool EditDietEntry(CVelmoraDoc& doc, const CListed<CDietEntry>& before, const CChosenFood& food);

// The commands below take the selected entries in list order.

/// Asks and deletes; stops at the first failure. Returns how many are gone.
int DeleteDietEntries(CVelmoraDoc& doc, const ListedEntries<CDietEntry>& selected);

/// False when the selection is empty (after a message) or the question is not answered with Yes.
bool MayMove(const ListedEntries<CDietEntry>& selected);
/// Gives all entries the same place; stops at the first failure. Returns how many were moved.
int MoveDietEntries(CVelmoraDoc& doc, const ListedEntries<CDietEntry>& selected,
                    const CDietPlace& place);

/// Asks and appends a copy of the one selected entry. True when there is a new record.
bool DuplicateDietEntry(CVelmoraDoc& doc, const ListedEntries<CDietEntry>& selected);

// The rules of the diet diary's commands, without windows: checks with their messages, questions,
// writes.
#pragma once

#include <optional>

#include "app/VelmoraDoc.h"
#include "catalogue/items/ChosenFood.h"

inline constexpr QLatin1StringView kCannotAddEntry("Cannot add entry.");

/// The date, time and meal of entries.
struct CDietPlace {
    FileTime moment = 0;
    qint32 meal = 0;
};

/// "to Lunch"; "to Lunch of 31 May 2026" on another day than the one shown. Without a meal, the day
/// alone.
QString PlaceText(const CVelmoraDoc& doc, QDate day, std::optional<qint32> meal);
/// "Added 2 x Egg to Breakfast."
QString AddedText(const CVelmoraDoc& doc, QDate day, const CDietEntry& entry);

/// Copies kind, names, values, serving and amount of `food` to `entry`, not moment and meal. For an
/// item without a category (identifier -1) the entry's category name stays as it was.
void TakeChosenFood(CDatabase& database, const CChosenFood& food, CDietEntry& entry);

/// False after a message when `meal` is not 0 to 5, such as kAllMeals.
bool MayAddToMeal(int meal);
/// Appends an entry. Failure shows "Cannot add entry.".
bool AddDietEntry(CVelmoraDoc& doc, QDate day, qint32 meal, const CChosenFood& food);

/// False after a message unless exactly one entry is selected.
bool MayEdit(int selected);
/// Overwrites the record with the food; date and meal stay. Failure shows "Cannot add entry.".
bool EditDietEntry(CVelmoraDoc& doc, const CListed<CDietEntry>& before, const CChosenFood& food);

// The commands below take the selected entries in list order.

/// Asks and deletes; stops at the first failure. Returns how many were deleted.
int DeleteDietEntries(CVelmoraDoc& doc, const ListedEntries<CDietEntry>& selected);

/// False when the selection is empty (after a message) or the answer is not Yes.
bool MayMove(const ListedEntries<CDietEntry>& selected);
/// Moves all entries to `place`; stops at the first failure. Returns how many were moved.
int MoveDietEntries(CVelmoraDoc& doc, const ListedEntries<CDietEntry>& selected,
                    const CDietPlace& place);

/// Checks that one entry is selected, asks and appends a copy of it. True when it was added.
bool DuplicateDietEntry(CVelmoraDoc& doc, const ListedEntries<CDietEntry>& selected);

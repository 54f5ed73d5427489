// Eating again what was eaten before: copies of diet entries at other days and meals.
#pragma once

#include "app/VelmoraDoc.h"
#include "store/ListedEntries.h"

/// Where copies go. Without a time or a meal each copy keeps that of its entry.
struct CCopyPlace {
    QDate day;
    std::optional<QTime> time = {};
    std::optional<qint32> meal = {};
};

/// False after a message when no entry is selected.
bool MayCopy(int selected);
/// Deletes entries that were copied before, without asking; stops at the first failure. Returns how
/// many were deleted.
int CutDietEntries(CVelmoraDoc& doc, const ListedEntries<CDietEntry>& selected);

/// The entries without their records: a copy is a new one.
std::vector<CDietEntry> EntriesToCopy(const ListedEntries<CDietEntry>& listed);

struct CMealEntries {
    std::vector<CDietEntry> entries;
    CLeftOut leftOut;  ///< of the whole day: a damaged entry's meal is unknown
};
/// The entries of a day; with a meal, only those of that meal.
CMealEntries EntriesOfMeal(CVelmoraDoc& doc, QDate day, std::optional<qint32> meal);

/// Adds copies as one unit of work; stops at the first failure with "Cannot add entry.". Returns
/// how many were added.
int CopyEntries(CVelmoraDoc& doc, const std::vector<CDietEntry>& entries,
                const std::vector<CCopyPlace>& places);

/// The days after `first` up to `last` that are one of these weekdays (bit 0: Monday).
std::vector<QDate> DaysToRepeat(QDate first, QDate last, int weekdays);
/// How many of the days would then have more entries than a list shows.
int DaysBeyondList(CVelmoraDoc& doc, const std::vector<QDate>& days, int added);

/// A meal that can be eaten again.
struct CMealOffer {
    QString title;  ///< "Breakfast of Friday: 3 items, 412 kcal"
    std::vector<CDietEntry> entries;
};
/// That meal of the day before, and up to three different ones of the last 60 days, latest first.
std::vector<CMealOffer> MealOffers(CVelmoraDoc& doc, QDate day, qint32 meal);

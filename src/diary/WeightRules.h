// The commands of the weight diary without their windows: which message for which input, what is
// asked, what is stored.
#pragma once

#include <QTime>
#include <optional>

#include "app/VelmoraDoc.h"

/// Weight in force on a day in kg; the start weight of the targets when there is no entry at all.
double WeightOnDay(CVelmoraDoc& doc, QDate day);

/// What the dialog starts from for a new entry: the values of the latest entry at a time of the
/// day shown; without any entry the start weight of the targets.
CWeightEntry NewWeightEntry(CVelmoraDoc& doc, QTime time);

/// Appends an entry. Failure shows "Cannot add weight.".
bool AddWeight(CVelmoraDoc& doc, const CWeightEntry& entry);

/// False after a message unless exactly one entry is selected.
bool MayEditWeight(int selected);
/// The entry of a record as the dialog shows it: one whose date is damaged starts from the day
/// shown. Nothing after "Cannot add weight." when it cannot be read.
std::optional<CWeightEntry> WeightToEdit(CVelmoraDoc& doc, ObjectId record);
/// Replaces the entry of a record. Failure shows "Cannot add weight.".
bool EditWeight(CVelmoraDoc& doc, ObjectId record, const CWeightEntry& entry);

/// Asks and deletes. Every one that stays shows "Cannot delete weight.", and the others go all the
/// same. Returns how many are gone.
int DeleteWeights(CVelmoraDoc& doc, const ListedEntries<CWeightEntry>& selected);

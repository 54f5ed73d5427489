// The rules of the weight diary's commands, without windows: checks with their messages, questions,
// writes.
#pragma once

#include <QTime>
#include <optional>

#include "app/VelmoraDoc.h"

/// Weight in force on a day in kg; the start weight of the targets when there is no entry at all.
double WeightOnDay(CVelmoraDoc& doc, QDate day);

/// The initial values of a new entry: those of the latest entry, or without any the start weight of
/// the targets; at `time` on the day shown.
CWeightEntry NewWeightEntry(CVelmoraDoc& doc, QTime time);

/// Appends an entry. Failure shows "Cannot add weight.".
bool AddWeight(CVelmoraDoc& doc, const CWeightEntry& entry);

/// False after a message unless exactly one entry is selected.
bool MayEditWeight(int selected);
/// The entry of a record for the dialog; an invalid date is replaced by the day shown. Nothing,
/// after "Cannot add weight.", when it cannot be read.
std::optional<CWeightEntry> WeightToEdit(CVelmoraDoc& doc, ObjectId record);
/// Replaces the entry of a record. Failure shows "Cannot add weight.".
bool EditWeight(CVelmoraDoc& doc, ObjectId record, const CWeightEntry& entry);

/// Asks and deletes. Each entry that cannot be deleted shows "Cannot delete weight."; the others
/// are still deleted. Returns how many were deleted.
int DeleteWeights(CVelmoraDoc& doc, const ListedEntries<CWeightEntry>& selected);

// The rules of the exercise diary's list and commands, without windows: texts, checks with their
// messages, questions, writes.
#pragma once

#include <QTime>

#include "app/VelmoraDoc.h"

inline constexpr int kMinutesPerHour = 60;

/// The entries from `first` to `last`, both inclusive; none when a date is invalid.
CEntryRange<CExerciseEntry> ListExercises(CDatabase& database, QDate first, QDate last,
                                          EWrongCount wrongCount = EWrongCount::EndsList);

/// "02:15"; hours take as many digits as they need.
QString ExerciseTimeText(double minutes);
/// A whole number: kJ are rounded, kcal are truncated.
int WholeExerciseEnergy(double energyKcal, EEnergyUnit unit);
/// The same as a text; empty for zero and less.
QString ExerciseEnergyText(double energyKcal, EEnergyUnit unit);

/// The initial values of a new entry: one minute, no exercise.
CExerciseEntry NewExercise(QDate day, QTime time);
/// False after the message of the failed write.
bool AddExercise(CDatabase& database, const CExerciseEntry& entry);

/// False after a message unless exactly one entry is selected.
bool MayEditExercise(int selected);
/// Replaces the entry of a record. A failed write, or a record that no longer exists, shows the
/// message of the failed write and returns false.
bool EditExercise(CDatabase& database, ObjectId record, const CExerciseEntry& entry);

/// Asks and deletes in list order; stops at the first failure. Returns how many were deleted.
int DeleteExercises(CDatabase& database, const ListedEntries<CExerciseEntry>& selected);

/// Height of the entry list above the graph; heights are in logical pixels.
int ExerciseListHeight(int perMille, int viewHeight);

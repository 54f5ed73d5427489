// The commands of the exercise diary without their windows: what is listed and how, which message
// for which input, what is asked, what is stored.
#pragma once

#include <QTime>

#include "app/VelmoraDoc.h"

inline constexpr int kMinutesPerHour = 60;

/// From `first` to `last`, both included.
CEntryRange<CExerciseEntry> ListExercises(CDatabase& database, QDate first, QDate last,
                                          EWrongCount wrongCount = EWrongCount::EndsList);

/// "02:15"; hours take as many digits as they need.
QString ExerciseTimeText(double minutes);
/// Whole kJ are rounded, whole kcal are cut off.
int WholeExerciseEnergy(double energyKcal, EEnergyUnit unit);
/// The same as a text; empty for zero and less.
QString ExerciseEnergyText(double energyKcal, EEnergyUnit unit);

/// What "Add exercise..." begins with: one minute, nothing else.
CExerciseEntry NewExercise(QDate day, QTime time);
/// False after the message of the failed write.
bool AddExercise(CDatabase& database, const CExerciseEntry& entry);

/// False after a message unless exactly one entry is selected.
bool MayEditExercise(int selected);
/// Replaces the entry of a record. False after the message of the failed write, which a record that
/// is gone has as well.
bool EditExercise(CDatabase& database, ObjectId record, const CExerciseEntry& entry);

/// Asks and deletes in list order; stops at the first failure. Returns how many are gone.
int DeleteExercises(CDatabase& database, const ListedEntries<CExerciseEntry>& selected);

/// Height of the entry list over the graph, in logical pixels.
int ExerciseListHeight(int perMille, int viewHeight);

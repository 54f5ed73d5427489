// The commands of the exercise diary without their windows: what is listed and how, which message
// for which input, what is asked, what is stored.
#pragma once

#include <QTime>
#include <vector>

#include "app/VelmoraDoc.h"

inline constexpr int kMinutesPerHour = 60;

/// An entry and the record it stands in, which it is found by when it is changed.
struct CListedExercise {
    ObjectId record = 0;
    CExerciseEntry entry;
};
using ListedExercises = std::vector<CListedExercise>;

/// The entries of some days in stored order.
struct CExerciseList {
    ListedExercises entries;
    CLeftOut leftOut;
};
/// From `first` to `last`, both included.
CExerciseList ListExercises(CDatabase& database, QDate first, QDate last,
                            EWrongCount wrongCount = EWrongCount::EndsList);

/// "Running,slow"; the name alone when the type is empty.
QString ExerciseNameText(const CExerciseEntry& entry);
/// "02:15"; hours take as many digits as they need.
QString ExerciseTimeText(double minutes);
/// Whole kJ are rounded, whole kcal are cut off; empty for zero and less.
QString ExerciseEnergyText(double energyKcal, EEnergyUnit unit);

/// What "Add exercise..." begins with: one minute, nothing else.
CExerciseEntry NewExercise(QDate day, QTime time);
/// False after the message of the failed write.
bool AddExercise(CDatabase& database, const CExerciseEntry& entry);

/// False after a message unless exactly one entry is selected.
bool MayEditExercise(int selected);
/// Replaces what `before` stored. False after the message of the failed write, which a record that
/// is gone has as well.
bool EditExercise(CDatabase& database, const CListedExercise& before, const CExerciseEntry& after);

/// Asks and deletes in list order; stops at the first failure. Returns how many are gone.
int DeleteExercises(CDatabase& database, const ListedExercises& selected);

/// Height of the entry list over the graph, in logical pixels.
int ExerciseListHeight(int perMille, int viewHeight);

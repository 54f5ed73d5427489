// The energy burned and the surplus of a day, and of the seven days that end with it.
#pragma once

#include <array>

#include "app/VelmoraDoc.h"

/// Both energies in kcal.
struct CExerciseDay {
    QDate day;
    double burnedKcal = 0;   ///< by the day's exercises
    double surplusKcal = 0;  ///< eaten minus the energy target
};

inline constexpr int kGraphDays = 7;
using ExerciseWeek = std::array<CExerciseDay, kGraphDays>;

/// The six days before `last` and `last` itself, in this order.
ExerciseWeek ExerciseWeekOf(CVelmoraDoc& doc, QDate last);

/// "Total energy burned: %d/%d/%d%%": burned, surplus, and the share of the surplus that was
/// burned (0 when negative), in the energy unit.
QString ExerciseHeadline(const CExerciseDay& day, EEnergyUnit unit);

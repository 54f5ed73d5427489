// A month of weights, an exercise for the library, a workout, a report, a purge, the about box.
#pragma once

#include <vector>

#include "Player.h"

/// Begins and ends in the diet diary. The report is written to `reportFile`.
std::vector<CTourStep> KeepDiaries(const QString& reportFile);

// A month of weights, a workout from one's own library, a report, a purge, and the about box.
#pragma once

#include <vector>

#include "Player.h"

/// Begins and ends in the diet diary. The report is written to `reportFile`.
std::vector<CStep> KeepDiaries(const QString& reportFile);

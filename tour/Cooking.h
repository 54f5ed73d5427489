// A recipe of one's own, a menu with it, and eating it.
#pragma once

#include <vector>

#include "Player.h"

/// Begins and ends in the diet diary. The recipe is saved as text in `textFile`.
std::vector<CStep> CookAndEat(const QString& textFile);

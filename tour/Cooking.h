// Creating a recipe and a menu with it, and adding that to a meal.
#pragma once

#include <vector>

#include "Player.h"

/// Begins and ends in the diet diary. The recipe is saved as text and shared in `folder`.
std::vector<CTourStep> CookAndEat(const QString& folder);

// A user who types what was eaten instead of picking it.
#pragma once

#include "Player.h"

/// Searches in "Add Food", uses the quick line, and undoes both again.
std::vector<CTourStep> TypeAMeal();

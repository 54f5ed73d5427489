// The checks of a food before it is stored.
#pragma once

#include <optional>

#include "store/Database.h"

/// The two ways a food is measured. Stored only as the weight of serving 1: zero for OneServing.
enum class EServingMode { OneServing, Weighed };

EServingMode ServingModeOf(const CFoodItem& food);

/// The message about the first invalid value of `food`; nothing when it can be stored. `mode` is
/// the user's choice, `position` that of the food being edited, -1 for a new one. Category
/// identifier -1: none is selected. Name, type and serving names must be trimmed.
std::optional<QString> CheckFood(CDatabase& database, const CFoodItem& food, EServingMode mode,
                                 int position);

// What makes a food fit to be stored.
#pragma once

#include <optional>

#include "store/Database.h"

/// The two ways a food is measured. They are stored as the weight of serving 1: none or some.
enum class EServingMode { OneServing, Weighed };

EServingMode ServingModeOf(const CFoodItem& food);

/// The first reason against storing `food`, as its message; nothing when it can be stored.
/// `mode` is the one chosen by the user, `position` that of the food being edited, -1 for a new
/// one; category identifier -1 stands for none selected. Name, type and serving names come
/// trimmed.
std::optional<QString> CheckFood(CDatabase& database, const CFoodItem& food, EServingMode mode,
                                 int position);

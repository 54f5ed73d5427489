// What a new user does in the first ten minutes.
#pragma once

#include <vector>

#include "Player.h"

/// From the first dialog to a day with its totals and targets, and on to recipe, menu and diaries.
/// `foodFile` is imported, other files are written to `folder`.
std::vector<CTourStep> FirstTenMinutes(const QString& foodFile, const QString& folder);

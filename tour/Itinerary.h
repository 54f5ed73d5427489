// What a new user does in the first ten minutes.
#pragma once

#include <vector>

#include "Player.h"

/// From the first dialog to a day set against its targets. `foodFile` is imported on the way.
std::vector<CStep> FirstTenMinutes(const QString& foodFile);

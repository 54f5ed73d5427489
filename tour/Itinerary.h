// What a new user does in the first ten minutes.
#pragma once

#include <vector>

#include "Player.h"

/// From the first dialog to a day set against its targets, and on to a menu of one's own.
/// `foodFile` is imported on the way, `folder` takes the files that are written.
std::vector<CStep> FirstTenMinutes(const QString& foodFile, const QString& folder);

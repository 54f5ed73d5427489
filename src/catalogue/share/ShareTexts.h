// What sharing and taking in say.
#pragma once

#include <QString>
#include <array>

#include "app/LeftOutText.h"
#include "store/engine/PlatformError.h"

inline constexpr CListWords kItemWords = {"item", "items"};

/// How many items of each kind, by its code.
using CKindCounts = std::array<int, 4>;

/// "2 foods, 1 menu and 1 recipe"; "nothing".
QString CountsText(const CKindCounts& counts);

/// Why a share file at `path` was refused.
QString TakeInRefusalText(EPlatformError error, const QString& path);
/// Why the bytes of a share file for `path` could not be made.
QString ShareRefusalText(EPlatformError error, const QString& path);

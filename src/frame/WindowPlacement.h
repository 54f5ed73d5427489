// Where the window was when the program ended.
#pragma once

#include <QRect>

#include "platform/RegistrySettings.h"

/// The stored placement, as far as the desktop has room for it. Empty when none was stored, or when
/// too little of it lies on a screen.
QRect VisiblePlacement(const CRegistrySettings& stored);

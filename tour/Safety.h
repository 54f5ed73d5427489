// A backup, the check of all data, and the way back to the backup.
#pragma once

#include <vector>

#include "Player.h"

/// Begins and ends in the diet diary. The backup is written to `backupFile`.
std::vector<CTourStep> KeepSafe(const QString& backupFile);

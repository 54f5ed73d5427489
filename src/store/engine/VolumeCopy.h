// A copy of the open volume under another name.
#pragma once

#include "store/engine/SqliteFile.h"

/// Copies `volume` to a file beside `path`, reopens, checks and compares it, then renames it to
/// `path`, replacing a file of that name. kErrorCorrupt when the copy was saved but is as damaged
/// as the volume.
EPlatformError SaveVolumeCopy(CSqliteFile& volume, const QString& path);

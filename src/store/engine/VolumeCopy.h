// A copy of the open volume under another name.
#pragma once

#include "store/engine/SqliteFile.h"

/// What becomes of a copy that is as damaged as the volume.
enum class EDamagedCopy {
    Kept,  ///< of a volume that is lost otherwise
    Removed,
};

/// Copies `volume` to a private file beside `path`, reopens and checks it and compares the counts
/// of records of every database, then renames it to `path`, replacing a file of that name or the
/// one that a link leads to, and syncs the folder. kErrorCorrupt when the copy is damaged;
/// kErrorWriteFault when it is in place, but may be gone after a loss of power; kErrorAccessDenied
/// when `path` is something else than a file, or a link that leads nowhere.
EPlatformError SaveVolumeCopy(CSqliteFile& volume, const QString& path, EDamagedCopy damaged,
                              const CopyProgress& progress = {});

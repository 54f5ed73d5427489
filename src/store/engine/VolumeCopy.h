// A copy of the open volume under another name.
#pragma once

#include "store/engine/SqliteFile.h"

/// Writes what `volume` holds to `path` by way of a file beside it, which is opened again, checked
/// and compared before it takes the name. Returns a platform error number; kErrorCorrupt when the
/// copy stands there and is as damaged as the volume.
EPlatformError SaveVolumeCopy(CSqliteFile& volume, const QString& path);

// Checks a whole volume: the pages of its file, its tables, every record against its layout, what
// records say of each other, and the history. Nothing is changed.
#pragma once

#include "store/backup/Findings.h"
#include "store/engine/SqliteFile.h"
#include "store/engine/StorageEngine.h"

/// Whatever cannot be read is a finding. A file whose pages do not end, see CTreeWalk, is not
/// looked into any further. kErrorOperationAborted when `progress` cancelled the check; the
/// findings are then incomplete. It is called after each record with their number, and during long
/// statements, so nothing else may read the volume, see CWatchedWork.
EPlatformError CheckVolume(CSqliteFile& volume, CFindings& findings,
                           const CopyProgress& progress = {});

/// The databases of the volume, in order of creation.
EPlatformError ReadDatabases(CSqliteFile& volume, std::vector<CDatabaseInfo>& databases);

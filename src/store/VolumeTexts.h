// What is wrong with a volume, in words for the user.
#pragma once

#include <QString>

#include "store/engine/PlatformError.h"
#include "store/engine/VolumeState.h"

/// Shows "ERROR: CeMountDBVol failed (%ld)".
void ShowFailedMount(EPlatformError error);
/// Shows "Cannot open database." with the reason, see RefusalText.
void ShowCannotOpen(const QString& reason);
/// Why the volume at `path` could not be opened; `error` is the platform's number.
QString RefusalText(EPlatformError error, const QString& path);
/// What became of the open volume; empty when it is sound.
QString LostVolumeText(EVolumeState state, const QString& path);
/// The result of saving a copy as `path`; `error` is that of SaveVolumeCopy.
QString CopyText(EPlatformError error, const QString& path);
/// That the journal now at `kept` was found beside the volume at `path` and does not belong to it.
QString KeptJournalText(const QString& kept, const QString& path);

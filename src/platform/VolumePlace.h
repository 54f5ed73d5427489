// Where the volume file is by default.
#pragma once

#include <QString>

/// The directory part of the program's path with "VelmoraDb.db" appended; the bare name when the
/// path has no directory part.
QString VolumePathBeside(const QString& programPath);

/// Beside the program when that folder is known and can be written, and either the volume or a link
/// to it is there already or the program is not installed under a prefix; otherwise in the user's
/// data folder.
QString DefaultVolumePath(const QString& programPath);

// What is wrong with a volume, in words for its owner.
#pragma once

#include <QString>

/// Why the volume at `path` could not be opened; `error` is the platform's number.
QString RefusalText(int error, const QString& path);

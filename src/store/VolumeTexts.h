// What is wrong with a volume, in words for its owner.
#pragma once

#include <QString>

/// Why the volume at `path` could not be opened; `error` is the platform's number.
QString RefusalText(int error, const QString& path);
/// That the journal now at `kept` was found beside the volume at `path` and does not belong to it.
QString KeptJournalText(const QString& kept, const QString& path);

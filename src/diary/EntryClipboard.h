// Diet entries on the clipboard: as records for this program, as text for others.
#pragma once

#include <QMimeData>
#include <memory>
#include <vector>

#include "store/records/DiaryEntries.h"

/// `text` is what other programs get.
std::unique_ptr<QMimeData> MimeOfEntries(const std::vector<CDietEntry>& entries,
                                         const QString& text);
/// None for anything but what MimeOfEntries made.
std::vector<CDietEntry> EntriesOfMime(const QMimeData& data);

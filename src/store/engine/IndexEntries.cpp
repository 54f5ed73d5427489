#include "store/engine/IndexEntries.h"

#include <QtEndian>
#include <algorithm>

namespace {
constexpr qsizetype kEntrySize = 16;
}

QByteArray EncodeEntries(const std::vector<CIndexEntry>& entries) {
    QByteArray bytes(std::ssize(entries) * kEntrySize, Qt::Uninitialized);
    char* to = bytes.data();
    for (const CIndexEntry& entry : entries) {
        qToLittleEndian(entry.key, to);
        qToLittleEndian(entry.record, to + sizeof(qint64));
        to += kEntrySize;
    }
    return bytes;
}

std::vector<CIndexEntry> DecodeEntries(QByteArrayView bytes) {
    std::vector<CIndexEntry> entries;
    if (bytes.size() % kEntrySize != 0) {
        return entries;
    }
    entries.reserve(kBlockCapacity);
    for (; !bytes.isEmpty(); bytes = bytes.sliced(kEntrySize)) {
        entries.push_back({qFromLittleEndian<qint64>(bytes.data()),
                           qFromLittleEndian<qint64>(bytes.data() + sizeof(qint64))});
    }
    return entries;
}

bool AreEntriesSound(const std::vector<CIndexEntry>& entries, qint64 firstKey, qint64 count) {
    return !entries.empty() && std::ssize(entries) == count && count <= kBlockCapacity &&
           entries.front().key == firstKey &&
           std::ranges::is_sorted(entries, {}, &CIndexEntry::key) &&
           std::ranges::all_of(entries, [](const auto& entry) { return entry.record > 0; });
}

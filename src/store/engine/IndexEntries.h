// The entries of a block of a database's index, and their stored form.
#pragma once

#include <QByteArray>
#include <vector>

/// One entry is 16 bytes; 490 of them and the row's other columns fit one 8,192-byte page.
inline constexpr int kBlockCapacity = 490;

struct CIndexEntry {
    qint64 key;
    qint64 record;
};

/// Key and record of each entry, little-endian.
QByteArray EncodeEntries(const std::vector<CIndexEntry>& entries);
/// None when the bytes end within an entry.
std::vector<CIndexEntry> DecodeEntries(QByteArrayView bytes);
/// Whether these can be the entries of a block whose row has this first key and count.
bool AreEntriesSound(const std::vector<CIndexEntry>& entries, qint64 firstKey, qint64 count);

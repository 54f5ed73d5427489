#include "store/engine/PositionIndex.h"

#include <QByteArray>
#include <algorithm>
#include <bit>
#include <limits>
#include <utility>

namespace {
constexpr qint64 kOrdinalGap = qint64{1} << 32;
constexpr qint64 kMaximumOrdinal = qint64{1} << 62;

bool IsKeyBelow(const CIndexEntry& entry, qint64 key) {
    return entry.key < key;
}

bool IsBelowKey(qint64 key, const CIndexEntry& entry) {
    return key < entry.key;
}
}  // namespace

EPlatformError CBlockStatements::Prepare(CSqliteFile& file) {
    struct CRow {
        CStatement& statement;
        const char* sql;
    };
    const CRow rows[] = {
        {readDirectory,
         "SELECT id, ordinal, firstKey, count FROM blocks WHERE database=? ORDER BY ordinal"},
        {readEntries, "SELECT entries FROM blocks WHERE id=?"},
        {insert,
         "INSERT INTO blocks(database, ordinal, firstKey, count, entries) VALUES(?,?,?,?,?)"},
        {update, "UPDATE blocks SET ordinal=?, firstKey=?, count=?, entries=? WHERE id=?"},
        {setOrdinal, "UPDATE blocks SET ordinal=? WHERE id=?"},
        {remove, "DELETE FROM blocks WHERE id=?"},
    };
    for (const CRow& row : rows) {
        if (const EPlatformError error = row.statement.Prepare(file, row.sql);
            error != kErrorSuccess) {
            return error;
        }
    }
    return kErrorSuccess;
}

void CBlockStatements::Release() {
    for (CStatement* statement :
         {&readDirectory, &readEntries, &insert, &update, &setOrdinal, &remove}) {
        statement->Release();
    }
}

CPositionIndex::CPositionIndex(CSqliteFile& file, CBlockStatements& statements, qint64 database)
    : m_file(file), m_statements(statements), m_database(database) {}

EPlatformError CPositionIndex::Load() {
    CStatement& directory = m_statements.readDirectory;
    bool isSound = true;
    directory.Start({m_database});
    while (directory.Next()) {
        auto block = std::make_unique<CBlock>();
        block->row = directory.GetInteger(0);
        block->ordinal = directory.GetInteger(1);
        block->firstKey = directory.GetInteger(2);
        const qint64 count = directory.GetInteger(3);
        isSound = isSound && count > 0 && count <= kBlockCapacity && block->ordinal > 0 &&
                  block->ordinal < kMaximumOrdinal;
        if (!m_blocks.empty()) {
            const CBlock& previous = *m_blocks.back();
            isSound = isSound && block->ordinal > previous.ordinal &&
                      block->firstKey >= previous.firstKey;
        }
        block->count = static_cast<int>(count);
        m_blocks.push_back(std::move(block));
    }
    if (const EPlatformError error = directory.Finish(); error != kErrorSuccess) {
        return error;
    }
    if (!isSound) {
        return kErrorCorrupt;
    }
    RebuildCounts();
    return kErrorSuccess;
}

EPlatformError CPositionIndex::EntryAt(int position, CIndexEntry& entry) {
    const CPlace place = Locate(position);
    if (const EPlatformError error = LoadEntries(place.block); error != kErrorSuccess) {
        return error;
    }
    entry = m_blocks[place.block]->entries[place.offset];
    return kErrorSuccess;
}

EPlatformError CPositionIndex::LowerBound(qint64 key, int& position) {
    const auto next = std::ranges::partition_point(
        m_blocks, [key](const auto& block) { return block->firstKey < key; });
    const int block = static_cast<int>(next - m_blocks.begin()) - 1;
    if (block < 0) {
        position = 0;
        return kErrorSuccess;
    }
    // All entries before this block are below the key, none after it is.
    if (const EPlatformError error = LoadEntries(block); error != kErrorSuccess) {
        return error;
    }
    const auto& entries = m_blocks[block]->entries;
    const auto found = std::lower_bound(entries.begin(), entries.end(), key, IsKeyBelow);
    position = PositionOfBlock(block) + static_cast<int>(found - entries.begin());
    return kErrorSuccess;
}

EPlatformError CPositionIndex::UpperBound(qint64 key, int& position) {
    if (key < std::numeric_limits<qint64>::max()) {
        return LowerBound(key + 1, position);
    }
    position = m_count;
    return kErrorSuccess;
}

EPlatformError CPositionIndex::Insert(const CIndexEntry& entry) {
    if (m_blocks.empty()) {
        Append(entry);
        return kErrorSuccess;
    }
    const auto next = std::ranges::partition_point(
        m_blocks, [&entry](const auto& block) { return block->firstKey <= entry.key; });
    int target = std::max(static_cast<int>(next - m_blocks.begin()) - 1, 0);
    if (const EPlatformError error = LoadEntries(target); error != kErrorSuccess) {
        return error;
    }
    if (m_blocks[target]->count == kBlockCapacity) {
        // Records mostly arrive in order: leave the last block full and begin a new one.
        if (next == m_blocks.end() && m_blocks[target]->entries.back().key <= entry.key) {
            Append(entry);
            return kErrorSuccess;
        }
        Halve(target);
        if (m_blocks[target + 1]->firstKey <= entry.key) {
            ++target;
        }
    }
    auto& entries = m_blocks[target]->entries;
    const auto at = std::upper_bound(entries.begin(), entries.end(), entry.key, IsBelowKey);
    entries.insert(at, entry);
    UpdateCount(target, 1);
    return kErrorSuccess;
}

EPlatformError CPositionIndex::InsertAt(int position, const CIndexEntry& entry) {
    if (position == m_count) {
        return Insert(entry);
    }
    CPlace place = Locate(position);
    if (const EPlatformError error = LoadEntries(place.block); error != kErrorSuccess) {
        return error;
    }
    if (m_blocks[place.block]->count == kBlockCapacity) {
        Halve(place.block);
        if (const int lower = m_blocks[place.block]->count; place.offset > lower) {
            place = {place.block + 1, place.offset - lower};
        }
    }
    auto& entries = m_blocks[place.block]->entries;
    entries.insert(entries.begin() + place.offset, entry);
    UpdateCount(place.block, 1);
    return kErrorSuccess;
}

void CPositionIndex::RemoveAt(int position) {
    const CPlace place = Locate(position);
    CBlock& block = *m_blocks[place.block];
    Q_ASSERT(block.isLoaded);
    if (block.count == 1) {
        RemoveBlock(place.block);
        return;
    }
    block.entries.erase(block.entries.begin() + place.offset);
    UpdateCount(place.block, -1);
}

EPlatformError CPositionIndex::Flush() {
    for (const qint64 row : m_removed) {
        if (const EPlatformError error = m_statements.remove.Run({row}); error != kErrorSuccess) {
            return error;
        }
    }
    if (m_isRenumbered) {
        for (const auto& block : m_blocks) {
            const EPlatformError error = m_statements.setOrdinal.Run({block->ordinal, block->row});
            if (error != kErrorSuccess) {
                return error;
            }
        }
    }
    for (CBlock* block : m_changed) {
        if (const EPlatformError error = WriteBlock(*block); error != kErrorSuccess) {
            return error;
        }
        block->isChanged = false;
    }
    m_removed.clear();
    m_changed.clear();
    m_isRenumbered = false;
    return kErrorSuccess;
}

CPositionIndex::CPlace CPositionIndex::Locate(int position) const {
    int block = 0;
    int rest = position;
    const int size = static_cast<int>(m_blocks.size());
    for (int step = static_cast<int>(std::bit_floor(m_blocks.size())); step > 0; step /= 2) {
        if (block + step <= size && m_counts[block + step] <= rest) {
            block += step;
            rest -= m_counts[block];
        }
    }
    return {block, rest};
}

int CPositionIndex::PositionOfBlock(int block) const {
    int position = 0;
    for (int i = block; i > 0; i -= i & -i) {
        position += m_counts[i];
    }
    return position;
}

EPlatformError CPositionIndex::LoadEntries(int at) {
    CBlock& block = *m_blocks[at];
    if (block.isLoaded) {
        return kErrorSuccess;
    }
    std::vector<CIndexEntry> entries;
    CStatement& read = m_statements.readEntries;
    read.Start({block.row});
    if (read.Next()) {
        entries = DecodeEntries(read.GetBlob(0));
    }
    if (const EPlatformError error = read.Finish(); error != kErrorSuccess) {
        return error;
    }
    if (!AreSound(entries, at)) {
        return kErrorCorrupt;
    }
    block.entries = std::move(entries);
    block.isLoaded = true;
    return kErrorSuccess;
}

bool CPositionIndex::AreSound(const std::vector<CIndexEntry>& entries, int at) const {
    const CBlock& block = *m_blocks[at];
    const bool isLast = at + 1 == static_cast<int>(m_blocks.size());
    return AreEntriesSound(entries, block.firstKey, block.count) &&
           (isLast || entries.back().key <= m_blocks[at + 1]->firstKey);
}

void CPositionIndex::MarkChanged(CBlock& block) {
    if (!block.isChanged) {
        block.isChanged = true;
        m_changed.push_back(&block);
    }
}

void CPositionIndex::UpdateCount(int at, int difference) {
    CBlock& block = *m_blocks[at];
    block.count += difference;
    block.firstKey = block.entries.front().key;
    m_count += difference;
    for (int i = at + 1; i < static_cast<int>(m_counts.size()); i += i & -i) {
        m_counts[i] += difference;
    }
    MarkChanged(block);
}

void CPositionIndex::InsertBlock(int at, std::unique_ptr<CBlock> block) {
    MarkChanged(*block);
    m_blocks.insert(m_blocks.begin() + at, std::move(block));
    RebuildCounts();
}

void CPositionIndex::RemoveBlock(int at) {
    CBlock* block = m_blocks[at].get();
    std::erase(m_changed, block);
    if (block->row != 0) {
        m_removed.push_back(block->row);
    }
    m_blocks.erase(m_blocks.begin() + at);
    RebuildCounts();
}

void CPositionIndex::Append(const CIndexEntry& entry) {
    auto block = std::make_unique<CBlock>();
    block->ordinal = kOrdinalGap + (m_blocks.empty() ? 0 : m_blocks.back()->ordinal);
    block->firstKey = entry.key;
    block->count = 1;
    block->isLoaded = true;
    block->entries.reserve(kBlockCapacity);
    block->entries.push_back(entry);
    InsertBlock(static_cast<int>(m_blocks.size()), std::move(block));
}

void CPositionIndex::Halve(int at) {
    const bool isLast = at + 1 == static_cast<int>(m_blocks.size());
    if (!isLast && m_blocks[at + 1]->ordinal - m_blocks[at]->ordinal < 2) {
        Renumber();
    }
    CBlock& block = *m_blocks[at];
    auto upper = std::make_unique<CBlock>();
    upper->isLoaded = true;
    upper->ordinal =
        block.ordinal + (isLast ? kOrdinalGap : (m_blocks[at + 1]->ordinal - block.ordinal) / 2);
    const auto middle = block.entries.begin() + kBlockCapacity / 2;
    upper->entries.reserve(kBlockCapacity);
    upper->entries.assign(middle, block.entries.end());
    block.entries.erase(middle, block.entries.end());
    upper->count = static_cast<int>(upper->entries.size());
    upper->firstKey = upper->entries.front().key;
    block.count -= upper->count;
    MarkChanged(block);
    InsertBlock(at + 1, std::move(upper));
}

void CPositionIndex::Renumber() {
    qint64 ordinal = 0;
    for (const auto& block : m_blocks) {
        ordinal += kOrdinalGap;
        block->ordinal = ordinal;
    }
    m_isRenumbered = true;
}

void CPositionIndex::RebuildCounts() {
    const int size = static_cast<int>(m_blocks.size());
    m_counts.assign(size + 1, 0);
    m_count = 0;
    for (int i = 1; i <= size; ++i) {
        m_count += m_blocks[i - 1]->count;
        m_counts[i] += m_blocks[i - 1]->count;
        if (const int parent = i + (i & -i); parent <= size) {
            m_counts[parent] += m_counts[i];
        }
    }
}

EPlatformError CPositionIndex::WriteBlock(CBlock& block) {
    const QByteArray bytes = EncodeEntries(block.entries);
    const QByteArrayView entries(bytes);
    if (block.row != 0) {
        return m_statements.update.Run(
            {block.ordinal, block.firstKey, qint64{block.count}, entries, block.row});
    }
    const EPlatformError error = m_statements.insert.Run(
        {m_database, block.ordinal, block.firstKey, qint64{block.count}, entries});
    block.row = m_file.GetLastRowId();
    return error;
}

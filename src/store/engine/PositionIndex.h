// The order of one database's records: which record is at which position.
//
// Entries (key, record) are kept in ascending order of key, equal keys in order of insertion, in
// blocks of up to kBlockCapacity. A block is one row of the file; its first key and its count have
// columns of their own, so that the directory of blocks is read without the entries.
//
// Invariants:
// 1. No block is empty; first keys ascend; ordinals ascend strictly, with gaps to insert into.
// 2. A block's entries are loaded when they are first needed, and checked against its row.
// 3. Every difference between memory and file is noted in m_changed, m_removed or m_isRenumbered.
#pragma once

#include <memory>
#include <vector>

#include "store/engine/IndexEntries.h"
#include "store/engine/Statement.h"

/// The statements that every index shares, prepared once per mount.
struct CBlockStatements {
    CStatement readDirectory;
    CStatement readEntries;
    CStatement insert;
    CStatement update;
    CStatement setOrdinal;
    CStatement remove;

    EPlatformError Prepare(CSqliteFile& file);
    void Release();
};

/// After a rollback of the file an index is wrong and must be discarded.
class CPositionIndex {
  public:
    CPositionIndex(CSqliteFile& file, CBlockStatements& statements, qint64 database);

    /// Reads the directory of blocks.
    EPlatformError Load();
    [[nodiscard]] int Count() const { return m_count; }

    /// `position` must lie in 0 to Count() - 1, here and in RemoveAt.
    EPlatformError EntryAt(int position, CIndexEntry& entry);
    /// First position whose key is not below `key`; Count() when all are below.
    EPlatformError LowerBound(qint64 key, int& position);
    /// First position whose key is above `key`; Count() when there is none.
    EPlatformError UpperBound(qint64 key, int& position);
    /// Inserts after all entries of the same key.
    EPlatformError Insert(const CIndexEntry& entry);
    /// Inserts at a position from the lower to the upper bound of the entry's key.
    EPlatformError InsertAt(int position, const CIndexEntry& entry);
    /// The entry has been read by EntryAt.
    void RemoveAt(int position);
    /// Writes what changed into the file, within the caller's transaction.
    EPlatformError Flush();

  private:
    struct CBlock {
        qint64 row = 0;  ///< 0 until it is first written
        qint64 ordinal = 0;
        qint64 firstKey = 0;
        int count = 0;
        bool isLoaded = false;
        bool isChanged = false;
        std::vector<CIndexEntry> entries;
    };
    struct CPlace {
        int block;
        int offset;
    };

    [[nodiscard]] CPlace Locate(int position) const;
    [[nodiscard]] int PositionOfBlock(int block) const;
    EPlatformError LoadEntries(int block);
    [[nodiscard]] bool AreSound(const std::vector<CIndexEntry>& entries, int block) const;
    void MarkChanged(CBlock& block);
    void UpdateCount(int block, int difference);
    void InsertBlock(int at, std::unique_ptr<CBlock> block);
    void RemoveBlock(int at);
    void Append(const CIndexEntry& entry);
    void Halve(int block);
    void Renumber();
    void RebuildCounts();
    EPlatformError WriteBlock(CBlock& block);

    CSqliteFile& m_file;
    CBlockStatements& m_statements;
    qint64 m_database;
    int m_count = 0;
    std::vector<std::unique_ptr<CBlock>> m_blocks;
    std::vector<int> m_counts;  ///< Fenwick tree over the blocks' counts, first place unused
    std::vector<CBlock*> m_changed;
    std::vector<qint64> m_removed;
    bool m_isRenumbered = false;
};

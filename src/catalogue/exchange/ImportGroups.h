// The groups of records that an import writes.
#pragma once

#include <optional>

#include "catalogue/exchange/CsvLayout.h"

/// The records of a group become durable together. Only what is durable counts as imported.
class CImportGroups {
  public:
    explicit CImportGroups(CDatabase& database) : m_store(database.GetStore()) {}
    /// Begins the first group.
    void Begin() { m_group.emplace(m_store); }
    [[nodiscard]] bool HasBegun() const { return m_group.has_value(); }
    /// Call before each item, whose components are added to its group. False when the group before
    /// is lost.
    [[nodiscard]] bool MakeRoom();
    /// Counts what became of an item or a component; false when it could not be stored.
    [[nodiscard]] bool Note(EStored stored);
    /// Ends the group. False when it is lost.
    [[nodiscard]] bool Commit();

    [[nodiscard]] const CImportCounts& Counts() const { return m_counts; }

  private:
    CRecordStore& m_store;
    std::optional<CRecordGroup> m_group;
    int m_records = 0;        ///< written, but not yet durable
    CImportCounts m_written;  ///< of these, items that count as imported
    CImportCounts m_counts;
};

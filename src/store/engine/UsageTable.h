// The counts of use of a volume, in a table beside the records: how often an owner has used what.
#pragma once

#include <QString>
#include <unordered_map>

#include "store/engine/SqliteFile.h"
#include "store/engine/StorageEngine.h"

/// What is counted, exactly as it is stored in the records that use it.
struct CUse {
    qint32 kind = 0;
    QString category;
    QString name;
    QString type;
    qint32 meal = 0;
    bool operator==(const CUse&) const = default;
};
struct CUseHash {
    std::size_t operator()(const CUse& use) const;
};
/// Counts, or changes of counts.
using UseRows = std::unordered_map<CUse, qint64, CUseHash>;

/// An owner is the database identifier of a profile. The engine's state outlives the table.
///
/// The table is created with the first row. A volume without it is complete and has the same
/// version; a program that does not know the table leaves it alone, so counts may be out of date. A
/// damaged table must not keep records from being written: it is dropped.
class CUsageTable {
  public:
    explicit CUsageTable(CStorageState& state) : m_state(state) {}

    /// All rows of an owner.
    EPlatformError Read(ObjectId owner, UseRows& rows);

    // From within a unit of work:
    /// Adds to the counts of an owner. A count of 0 has no row.
    EPlatformError Add(ObjectId owner, const UseRows& changes);
    EPlatformError DeleteOwner(ObjectId owner);

    /// Releases the statements.
    void Release();

  private:
    EPlatformError Prepare();
    EPlatformError AddRows(ObjectId owner, const UseRows& changes);
    EPlatformError DropIfDamaged(EPlatformError error);

    CStorageState& m_state;
    CStatement m_add;
    CStatement m_removeZero;
};

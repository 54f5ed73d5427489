// The counts of use of a volume, in a table beside the records: how often an owner has used what.
#pragma once

#include <QString>
#include <optional>
#include <unordered_map>

#include "store/engine/Statement.h"
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
/// Invariants:
/// 1. The table is created with the first row. A volume without it is complete and has the same
///    version; a program that does not know the table leaves it alone.
/// 2. The row of owner 0 names the generation of the volume that the last unit of work stored. When
///    others have been stored since, by a program that does not know the table or by a unit of work
///    that was cut off, the counts are not used and are replaced with the next change.
/// 3. A damaged page met within a transaction fails the whole transaction. So Load reads the whole
///    table before a unit of work writes to it. A damaged table is left as it is, since removing it
///    would follow damaged links between pages: the counts start again in a table with the next
///    number.
class CUsageTable {
  public:
    explicit CUsageTable(CStorageState& state) : m_state(state) {}

    /// Reads the table, unless that has been done. Call before a unit of work and before SumOf.
    /// Damage is no failure: the counts start again.
    EPlatformError Load();
    /// Sum of all counts of an owner; 0 when they are not in the table.
    [[nodiscard]] qint64 SumOf(ObjectId owner) const;
    /// All rows of an owner.
    EPlatformError Read(ObjectId owner, UseRows& rows);

    // From within a unit of work:
    /// Adds to the counts of an owner. A count of 0 has no row.
    EPlatformError Add(ObjectId owner, const UseRows& changes);
    EPlatformError DeleteOwner(ObjectId owner);
    /// At the end of the unit: keeps the counts valid.
    EPlatformError Stamp();

    void UnitCommitted();
    /// Releases the statements; the table is read again when it is needed.
    void UnitAbandoned();
    /// When the volume is closed.
    void Forget();

  private:
    EPlatformError Find();
    EPlatformError ReadSums(qint64& stamp);
    EPlatformError Prepare();
    EPlatformError Create();
    EPlatformError RunOnce(const char* sql, std::initializer_list<CSqlValue> values);
    EPlatformError PrepareNumbered(CStatement& statement, const char* sql);

    CStorageState& m_state;
    CStatement m_add;
    CStatement m_removeZero;
    qint64 m_number = 0;  ///< of the newest table; 0: there is none
    bool m_isLoaded = false;
    bool m_isDamaged = false;
    bool m_isWritten = false;  ///< in the unit under way: the counts are valid once it is committed
    /// Whether the counts are those of the records. It is found out before this program first
    /// writes the file.
    std::optional<bool> m_isValid;
    std::unordered_map<ObjectId, qint64> m_sums;
};

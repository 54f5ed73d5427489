// One open database of one kind of record: reading, writing and deleting by position.
#pragma once

#include <functional>
#include <limits>
#include <optional>

#include "store/LeftOut.h"
#include "store/RecordStore.h"
#include "store/records/ItemRecord.h"

/// Shows "<prefix>Database error. Wrong number of properties, record #%d, props = %d (%d)".
void ReportWrongPropertyCount(int position, const PropertyList& found, int expected,
                              const QString& prefix = QString());

/// What a list does about a record with a wrong number of properties: show the message and end
/// there, or count it like any other damaged record.
enum class EWrongCount { EndsList, IsDamage };

/// Which records a list reads, and how.
struct CListQuery {
    qint64 low;   ///< least key
    qint64 high;  ///< greatest key
    EWrongCount wrongCount = EWrongCount::EndsList;
    int most = kAllProperties;   ///< see CItemDatabaseBase::ForEachFrom
    QString messagePrefix = {};  ///< of the message of a wrong number of properties
    int from = 0;                ///< records before this position are skipped
    /// A wrong number of properties is also reported for the record after the list, unless its key
    /// is larger than this.
    qint64 lastKey = std::numeric_limits<qint64>::max();
};

/// What a list did with a record.
enum class ETake {
    Taken,    ///< listed, or not wanted
    Last,     ///< listed, and the list is now full
    Damaged,  ///< not listed: its values have the wrong types
};

/// The part that does not depend on the item's class. The store outlives it.
class CItemDatabaseBase {
  public:
    CItemDatabaseBase(CRecordStore& store, const CRecordLayout& layout);

    /// Opens under the layout's own name, or under `name` when given (profile databases).
    [[nodiscard]] bool Open(bool openOnly, const QString& name = QString());
    void Close();
    [[nodiscard]] bool IsOpen() const { return m_handle.IsValid(); }
    /// Identifier of the database; 0 when it is not open.
    [[nodiscard]] ObjectId GetId() const { return m_handle.id; }

    int Count();
    /// False without a message when there is no such position; a wrong number of properties shows
    /// "Database error. Wrong number of properties, record #%d, props = %d (%d)".
    [[nodiscard]] bool Read(int position, CItemRecord& item);
    /// As Read, without the message: for scans that must go on.
    [[nodiscard]] bool ReadQuietly(int position, CItemRecord& item);
    /// The same for a record by its identifier.
    [[nodiscard]] bool ReadRecord(ObjectId record, CItemRecord& item);
    /// Position -1 adds. A position past the end fails silently; a failed write shows the layout's
    /// own message, unless that is empty.
    [[nodiscard]] bool Write(int position, const CItemRecord& item);
    /// Failure shows "Cannot delete record. Error=%d".
    [[nodiscard]] bool Delete(int position);
    /// The same without the message.
    [[nodiscard]] bool DeleteQuietly(int position);

    /// Identifier of the record at a position, which it keeps when it moves; 0 when there is none.
    ObjectId RecordAt(int position);
    /// Position of a record; -1 when it no longer exists or cannot be read.
    int PositionOf(ObjectId record);

    /// See CRecordStore.
    int FirstPositionOf(qint64 key);
    int FirstPositionInRange(qint64 low, qint64 high);
    std::optional<qint64> KeyAt(int position);
    /// The positions of the records of a key (possibly none); nothing when they cannot be read.
    /// Unlike the searches above, which guess after a failed read, this is safe to delete by.
    std::optional<CPositionRange> RangeOf(qint64 key);
    /// The positions of the keys from `low` to `high`; nothing when they cannot be read.
    std::optional<CPositionRange> RangeBetween(qint64 low, qint64 high) {
        return m_store.RangeOf(m_handle, low, high);
    }

    /// See CRecordStore.
    qint64 EstimateRoom(const CPositionRange& range) {
        return m_store.EstimateRoom(m_handle, range);
    }

    /// Reads from position `first` on (-1: nothing) and passes each property list to `take` until
    /// it returns false. A record that cannot be read is skipped. Only the first `most` values are
    /// read, see CStorageEngine::ReadRecord.
    void ForEachFrom(int first, const std::function<bool(int position, PropertyList&)>& take,
                     int most = kAllProperties);

    /// Reads a list: passes the records with keys from `low` to `high` and the right number of
    /// properties to `take`, and returns what was left out. A record that cannot be read, or whose
    /// property 0 is outside the keys, is skipped and counts as damaged.
    [[nodiscard]] CLeftOut ReadList(const CListQuery& query,
                                    const std::function<ETake(int position, PropertyList&)>& take);
    /// The same with the record's identifier, for lists that remember their records.
    [[nodiscard]] CLeftOut ReadRecords(
        const CListQuery& query, const std::function<ETake(ObjectId record, PropertyList&)>& take);

    [[nodiscard]] CRecordStore& GetStore() { return m_store; }
    [[nodiscard]] const CRecordLayout& GetLayout() const { return m_layout; }

  private:
    using TakeRecord = std::function<ETake(int position, ObjectId record, PropertyList&)>;
    CLeftOut Walk(const CListQuery& query, const TakeRecord& take);
    /// Identifier of the record read; 0 when it cannot be read.
    ObjectId ReadProperties(int position, PropertyList& properties, int most);
    /// Reports the first readable record after the list when its number of properties is wrong.
    void ReportDamageAfter(int end, const CListQuery& query);

    CRecordStore& m_store;
    const CRecordLayout& m_layout;
    CDatabaseHandle m_handle;
};

/// Adds the item's type, so that a food cannot be written among the menus.
template <typename Item>
class CItemDatabase : public CItemDatabaseBase {
  public:
    using CItemDatabaseBase::CItemDatabaseBase;
    [[nodiscard]] bool Read(int position, Item& item) {
        return CItemDatabaseBase::Read(position, item);
    }
    [[nodiscard]] bool Write(int position, const Item& item) {
        return CItemDatabaseBase::Write(position, item);
    }
};

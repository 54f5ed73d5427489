// One open database of one kind of record: reading, writing and deleting by position, written
// once for all ten.
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

/// What a list does about a record with a wrong number of properties: it ends after the message, or
/// counts it as any other damaged one.
enum class EWrongCount { EndsList, IsDamage };

/// Which records a list reads, and how.
struct CListQuery {
    qint64 low;   ///< least key
    qint64 high;  ///< greatest key
    EWrongCount wrongCount = EWrongCount::EndsList;
    int most = kAllProperties;   ///< see CItemDatabaseBase::ForEachFrom
    QString messagePrefix = {};  ///< of the message of a wrong number of properties
    int from = 0;                ///< records before this position are left alone
    /// A wrong number of properties is also reported for the record after the list, unless its key
    /// is past this.
    qint64 lastKey = std::numeric_limits<qint64>::max();
};

/// What became of a record that a list was handed.
enum class ETake {
    Taken,    ///< listed, or of no concern to the list
    Last,     ///< listed in the last place of a list that is full now
    Damaged,  ///< holds something else than it should
};

/// The part that does not depend on the item's class. Owns the handle; the store outlives it.
class CItemDatabaseBase {
  public:
    CItemDatabaseBase(CRecordStore& store, const CRecordLayout& layout);

    /// Opens under the layout's own name, or under `name` when given (profile databases).
    [[nodiscard]] bool Open(bool openOnly, const QString& name = QString());
    void Close();
    [[nodiscard]] bool IsOpen() const { return m_handle.IsValid(); }
    /// Of the database itself; 0 when it is not open.
    [[nodiscard]] ObjectId GetId() const { return m_handle.id; }

    int Count();
    /// False without a message when there is no such position; a wrong number of properties shows
    /// "Database error. Wrong number of properties, record #%d, props = %d (%d)".
    [[nodiscard]] bool Read(int position, CItemRecord& item);
    /// As Read, without the message: for scans that must go on.
    [[nodiscard]] bool ReadQuietly(int position, CItemRecord& item);
    /// Position -1 adds. A position past the end fails silently; a failed write shows the layout's
    /// own message, unless that is empty.
    [[nodiscard]] bool Write(int position, const CItemRecord& item);
    /// Failure shows "Cannot delete record. Error=%d".
    [[nodiscard]] bool Delete(int position);
    /// The same without the message.
    [[nodiscard]] bool DeleteQuietly(int position);

    /// Identifier of the record at a position, which outlives its moves; 0 when there is none.
    ObjectId RecordAt(int position);
    /// Position of that record; -1 when it is gone or cannot be read.
    int PositionOf(ObjectId record);

    /// See CRecordStore.
    int FirstPositionOf(qint64 key);
    int FirstPositionInRange(qint64 low, qint64 high);
    std::optional<qint64> KeyAt(int position);
    /// The records of a key, none of them when the count is 0; nothing when the positions cannot
    /// be had. Unlike the searches above, whose answer after a failed read is a guess, this is
    /// fit to delete by.
    std::optional<CPositionRange> RangeOf(qint64 key);
    /// The positions of the keys from `low` to `high`; nothing when they cannot be had.
    std::optional<CPositionRange> RangeBetween(qint64 low, qint64 high) {
        return m_store.RangeOf(m_handle, low, high);
    }

    /// Reads on from `first` (-1: nothing) and hands each property list to `take` until it returns
    /// false. A record that cannot be read is skipped.
    /// A list that needs the first `most` values alone is spared the rest, see
    /// CStorageEngine::ReadRecord.
    void ForEachFrom(int first, const std::function<bool(int position, PropertyList&)>& take,
                     int most = kAllProperties);

    /// Reads a list: hands the records with keys from `low` to `high` and the right number of
    /// properties to `take`, and returns what was left out. A record that cannot be read, or whose
    /// property 0 is not the key it is stored under, is passed over.
    [[nodiscard]] CLeftOut ReadList(const CListQuery& query,
                                    const std::function<ETake(int position, PropertyList&)>& take);
    /// The same for a list that remembers its records.
    [[nodiscard]] CLeftOut ReadRecords(
        const CListQuery& query, const std::function<ETake(ObjectId record, PropertyList&)>& take);

    [[nodiscard]] CRecordStore& GetStore() { return m_store; }
    [[nodiscard]] const CRecordLayout& GetLayout() const { return m_layout; }

  private:
    using TakeRecord = std::function<ETake(int position, ObjectId record, PropertyList&)>;
    CLeftOut Walk(const CListQuery& query, const TakeRecord& take);
    /// Identifier of the record read; 0 when it cannot be read.
    ObjectId ReadProperties(int position, PropertyList& properties, int most);
    /// A list ends at the first record that is not its own, and reports a damaged one.
    void LookPast(int end, const CListQuery& query);

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

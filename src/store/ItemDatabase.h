// One open database of one kind of record: reading, writing and deleting by position, written
// once for all ten.
#pragma once

#include <functional>
#include <optional>

#include "store/ItemRecord.h"
#include "store/RecordStore.h"

/// Shows "<prefix>Database error. Wrong number of properties, record #%d, props = %d (%d)".
void ReportWrongPropertyCount(int position, const PropertyList& found, int expected,
                              const QString& prefix = QString());

/// Neighbouring positions.
struct CPositionRange {
    int first = 0;
    int count = 0;
};

/// The part that does not depend on the item's class. Owns the handle; the store outlives it.
class CItemDatabaseBase {
  public:
    CItemDatabaseBase(CRecordStore& store, const CRecordLayout& layout);

    /// Opens under the layout's own name, or under `name` when given (profile databases).
    bool Open(bool openOnly, const QString& name = QString());
    void Close();
    [[nodiscard]] bool IsOpen() const { return m_handle.IsValid(); }

    int Count();
    /// False without a message when there is no such position; a wrong number of properties shows
    /// "Database error. Wrong number of properties, record #%d, props = %d (%d)".
    bool Read(int position, CItemRecord& item);
    /// As Read, without the message: for scans that must go on.
    bool ReadQuietly(int position, CItemRecord& item);
    /// Position -1 adds. A position past the end fails silently; a failed write shows the layout's
    /// own message, unless that is empty.
    bool Write(int position, const CItemRecord& item);
    /// Failure shows "Cannot delete record. Error=%d".
    bool Delete(int position);
    /// The same without the message.
    bool DeleteQuietly(int position);

    /// Identifier of the record at a position, which outlives its moves; 0 when there is none.
    ObjectId RecordAt(int position);
    /// Position of that record, looked for from the front; -1 when it is gone.
    int PositionOf(ObjectId record);

    /// See CRecordStore.
    int FirstPositionOf(qint64 key);
    int FirstPositionInRange(qint64 low, qint64 high);
    std::optional<qint64> KeyAt(int position);
    /// The records of a key, none of them when the count is 0; nothing when the positions cannot
    /// be had. Unlike the searches above, whose answer after a failed read is a guess, this is
    /// fit to delete by.
    std::optional<CPositionRange> RangeOf(qint64 key);

    /// Reads on from `first` (-1: nothing) and hands each property list to `take` until it returns
    /// false. A record that cannot be read is skipped.
    /// A list that needs the first `most` values alone is spared the rest, see
    /// CStorageEngine::ReadRecord.
    void ForEachFrom(int first, const std::function<bool(int position, PropertyList&)>& take,
                     int most = kAllProperties);

    [[nodiscard]] CRecordStore& GetStore() { return m_store; }
    [[nodiscard]] const CRecordLayout& GetLayout() const { return m_layout; }

  private:
    CRecordStore& m_store;
    const CRecordLayout& m_layout;
    CDatabaseHandle m_handle;
};

/// Adds the item's type, so that a food cannot be written among the menus.
template <typename Item>
class CItemDatabase : public CItemDatabaseBase {
  public:
    using CItemDatabaseBase::CItemDatabaseBase;
    bool Read(int position, Item& item) { return CItemDatabaseBase::Read(position, item); }
    bool Write(int position, const Item& item) { return CItemDatabaseBase::Write(position, item); }
};

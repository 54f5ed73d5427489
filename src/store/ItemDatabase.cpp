#include "store/ItemDatabase.h"

#include "platform/Messages.h"
#include "store/engine/RecordCodec.h"

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

void ReportWrongPropertyCount(int position, const PropertyList& found, int expected,
                              const QString& prefix) {
    ShowMessage(prefix + FormatText("Database error. Wrong number of properties, record #%d, "
                                    "props = %d (%d)"_L1,
                                    {position, static_cast<qint64>(found.size()), expected}));
}

CItemDatabaseBase::CItemDatabaseBase(CRecordStore& store, const CRecordLayout& layout)
    : m_store(store), m_layout(layout) {}

bool CItemDatabaseBase::Open(bool openOnly, const QString& name) {
    m_handle =
        m_store.OpenDatabase(name.isEmpty() ? QString::fromLatin1(m_layout.databaseName) : name,
                             m_layout.SortPropertyId(), m_layout.databaseType, openOnly);
    return m_handle.IsValid();
}

void CItemDatabaseBase::Close() {
    CRecordStore::CloseDatabase(m_handle);
}

int CItemDatabaseBase::Count() {
    return m_store.CountRecords(m_handle);
}

bool CItemDatabaseBase::Read(int position, CItemRecord& item) {
    PropertyList properties;
    if (m_store.SeekToPosition(m_handle, position) == 0 ||
        !m_store.ReadCurrent(m_handle, properties)) {
        return false;
    }
    const int expected = item.GetLayout().Count();
    if (std::ssize(properties) != expected) {
        ReportWrongPropertyCount(position, properties, expected);
        return false;
    }
    return item.SetProperties(std::move(properties));
}

bool CItemDatabaseBase::ReadQuietly(int position, CItemRecord& item) {
    PropertyList properties;
    return m_store.SeekToPosition(m_handle, position) != 0 &&
           m_store.ReadCurrent(m_handle, properties) && item.SetProperties(std::move(properties));
}

bool CItemDatabaseBase::ReadRecord(ObjectId record, CItemRecord& item) {
    PropertyList properties;
    return m_store.ReadRecord(record, properties) && item.SetProperties(std::move(properties));
}

bool CItemDatabaseBase::Write(int position, const CItemRecord& item) {
    const ObjectId record = position < 0 ? 0 : m_store.SeekToPosition(m_handle, position);
    if (position >= 0 && record == 0) {
        return false;
    }
    if (m_store.WriteRecord(m_handle, record, item.GetProperties())) {
        return true;
    }
    const QLatin1StringView failure(item.GetLayout().writeFailure);
    if (!failure.isEmpty()) {
        m_store.ShowFailure(FormatText(failure, {m_store.GetLastError()}));
    }
    return false;
}

bool CItemDatabaseBase::Delete(int position) {
    return m_store.DeleteRecord(m_handle, position);
}

bool CItemDatabaseBase::DeleteQuietly(int position) {
    return m_store.DeleteRecordQuietly(m_handle, position);
}

std::optional<qint64> CItemDatabaseBase::KeyAt(int position) {
    return m_store.KeyAt(m_handle, position);
}

std::optional<CPositionRange> CItemDatabaseBase::RangeOf(qint64 key) {
    const int first = FirstPositionOf(key);
    if (first < 0) {
        // Either there is no such key or the records cannot be counted.
        return m_store.GetLastError() == kErrorSuccess ? std::optional(CPositionRange{})
                                                       : std::nullopt;
    }
    const int next = FirstPositionInRange(key + 1, std::numeric_limits<qint64>::max());
    const int end = next < 0 ? Count() : next;
    const bool isSound = KeyAt(first) == key && end > first && KeyAt(end - 1) == key;
    return isSound ? std::optional(CPositionRange{first, end - first}) : std::nullopt;
}

ObjectId CItemDatabaseBase::RecordAt(int position) {
    return m_store.SeekToPosition(m_handle, position);
}

int CItemDatabaseBase::PositionOf(ObjectId record) {
    return m_store.PositionOf(m_handle, record);
}

int CItemDatabaseBase::FirstPositionOf(qint64 key) {
    return m_store.FirstPositionOf(m_handle, key);
}

int CItemDatabaseBase::FirstPositionInRange(qint64 low, qint64 high) {
    return m_store.FirstPositionInRange(m_handle, low, high);
}

void CItemDatabaseBase::ForEachFrom(int first,
                                    const std::function<bool(int position, PropertyList&)>& take,
                                    int most) {
    const int count = Count();
    PropertyList properties;
    for (int position = first; position >= 0 && position < count; ++position) {
        if (ReadProperties(position, properties, most) != 0 && !take(position, properties)) {
            return;
        }
    }
}

CLeftOut CItemDatabaseBase::ReadList(const CListQuery& query,
                                     const std::function<ETake(int, PropertyList&)>& take) {
    return Walk(query, [&take](int position, ObjectId, PropertyList& properties) {
        return take(position, properties);
    });
}

CLeftOut CItemDatabaseBase::ReadRecords(const CListQuery& query,
                                        const std::function<ETake(ObjectId, PropertyList&)>& take) {
    return Walk(query, [&take](int, ObjectId record, PropertyList& properties) {
        return take(record, properties);
    });
}

CLeftOut CItemDatabaseBase::Walk(const CListQuery& query, const TakeRecord& take) {
    if (!IsOpen()) {
        return {};
    }
    const std::optional<CPositionRange> range = RangeBetween(query.low, query.high);
    // Without a range, every readable record is filtered by its own property 0.
    const int first = range ? range->first : FirstPositionInRange(query.low, query.high);
    const int end = range ? range->first + range->count : Count();
    CLeftOut leftOut;
    leftOut.isUnknown = !range;
    PropertyList properties;
    for (int position = std::max(first, query.from); position < end; ++position) {
        const ObjectId record = ReadProperties(position, properties, query.most);
        if (record == 0) {
            ++leftOut.damaged;
            continue;
        }
        const std::optional<qint64> key = KeyOf(properties);
        const bool isInRange = key && *key >= query.low && *key <= query.high;
        if (!range && !isInRange) {
            continue;
        }
        const bool isWhole = std::ssize(properties) == m_layout.Count();
        if (!isWhole && query.wrongCount == EWrongCount::EndsList) {
            ReportWrongPropertyCount(position, properties, m_layout.Count(), query.messagePrefix);
            ++leftOut.damaged;
            leftOut.beyond = end - position - 1;
            leftOut.isEnded = true;
            return leftOut;
        }
        const ETake taken =
            isWhole && isInRange ? take(position, record, properties) : ETake::Damaged;
        leftOut.damaged += taken == ETake::Damaged ? 1 : 0;
        if (taken == ETake::Last) {
            leftOut.beyond = end - position - 1;
            return leftOut;
        }
    }
    if (range && query.wrongCount == EWrongCount::EndsList) {
        ReportDamageAfter(end, query);
    }
    return leftOut;
}

void CItemDatabaseBase::ReportDamageAfter(int end, const CListQuery& query) {
    const int count = Count();
    PropertyList properties;
    int position = end;
    while (position < count && ReadProperties(position, properties, 1) == 0) {
        ++position;
    }
    if (position < count && std::ssize(properties) != m_layout.Count() &&
        KeyOf(properties).value_or(query.low) <= query.lastKey) {
        ReportWrongPropertyCount(position, properties, m_layout.Count(), query.messagePrefix);
    }
}

ObjectId CItemDatabaseBase::ReadProperties(int position, PropertyList& properties, int most) {
    const ObjectId record = m_store.SeekToPosition(m_handle, position);
    return record != 0 && m_store.ReadCurrent(m_handle, properties, most) ? record : 0;
}

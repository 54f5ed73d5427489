#include "store/engine/RecordWrites.h"

#include <algorithm>

EPlatformError CRecordWrites::Add(ObjectId& record, QByteArrayView body,
                                  const CRecordPlace& place) {
    EPlatformError error = record == 0 ? m_state.recordIds.Allocate(record) : kErrorSuccess;
    if (error == kErrorSuccess) {
        error = m_state.addRecord.Run({record, body});
    }
    if (error != kErrorSuccess) {
        return error;
    }
    record = m_state.file.GetLastRowId();
    error = InsertEntry(record, place);
    return error != kErrorSuccess
               ? error
               : m_state.feed.Report({m_database, record, {}, {true, body, place.key}});
}

EPlatformError CRecordWrites::Replace(ObjectId record, int position, const CIndexEntry& old,
                                      QByteArrayView body, const CRecordPlace& place) {
    CRecordChange change{m_database, record, {}, {}};
    QByteArray bodyBefore;
    EPlatformError error =
        m_state.ReadBefore(m_database, record, position, old, bodyBefore, change.before);
    if (error != kErrorSuccess) {
        return error;
    }
    change.after = {true, body, place.key};
    error = m_state.replaceRecord.Run({body, record});
    if (error == kErrorSuccess && old.key != place.key) {
        m_opened.index.RemoveAt(position);
        error = InsertEntry(record, place);
    }
    return error == kErrorSuccess ? m_state.feed.Report(change) : error;
}

EPlatformError CRecordWrites::Remove(ObjectId record, int position, const CIndexEntry& old) {
    CRecordChange change{m_database, record, {}, {}};
    QByteArray bodyBefore;
    EPlatformError error =
        m_state.ReadBefore(m_database, record, position, old, bodyBefore, change.before);
    if (error == kErrorSuccess) {
        error = m_state.RemoveRecord(record);
    }
    if (error != kErrorSuccess) {
        return error;
    }
    m_opened.index.RemoveAt(position);
    return m_state.feed.Report(change);
}

EPlatformError CRecordWrites::InsertEntry(ObjectId record, const CRecordPlace& place) {
    CPositionIndex& index = m_opened.index;
    if (place.ordinal == CRecordState::kLast) {
        return index.Insert({place.key, record});
    }
    int first = 0;
    int end = 0;
    EPlatformError error = index.LowerBound(place.key, first);
    if (error == kErrorSuccess) {
        error = index.UpperBound(place.key, end);
    }
    const int room = end - first;
    return error == kErrorSuccess
               ? index.InsertAt(first + std::min(place.ordinal, room), {place.key, record})
               : error;
}

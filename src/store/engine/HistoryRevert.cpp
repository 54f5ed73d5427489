#include "store/engine/HistoryRevert.h"

#include "store/engine/Checksum.h"
#include "store/engine/History.h"
#include "store/engine/RecordWrites.h"

EPlatformError CHistoryRevert::Run(const CHistoryStep& step, EReverted& result) {
    CHistoryChange change;
    for (qint64 number = step.changes - 1; number >= 0; --number) {
        result = EReverted::Failed;
        EPlatformError error = m_tables.ReadChange(step, number, change);
        if (IsTableDamage(error)) {
            result = EReverted::Damaged;
        }
        bool isChanged = false;
        if (error == kErrorSuccess) {
            error = Revert(change, isChanged);
        }
        if (isChanged) {
            result = EReverted::Changed;
            return kErrorOperationAborted;
        }
        if (error != kErrorSuccess) {
            return error;
        }
    }
    result = EReverted::Done;
    return kErrorSuccess;
}

EPlatformError CHistoryRevert::Revert(const CHistoryChange& change, bool& isChanged) {
    CStorageState::COpenDatabase* opened = nullptr;
    EPlatformError error = m_state.Open(change.database, opened);
    isChanged = error == kErrorFileNotFound || !m_state.feed.IsWatched(change.database);
    if (error == kErrorSuccess && !isChanged) {
        error = Compare(change, isChanged);
    }
    if (error != kErrorSuccess || isChanged) {
        return error;
    }
    if (!change.PutsBack()) {
        return RemoveAdded(change, *opened, isChanged);
    }
    CRecordWrites writes(m_state, change.database, *opened);
    const CRecordPlace place{change.key, change.ordinal};
    ObjectId record = change.record;
    if (!change.IsLive()) {
        return writes.Add(record, change.body, place);
    }
    // Most such records have kept their key and their place: look there first.
    int position = 0;
    CIndexEntry entry{};
    error = opened->index.LowerBound(change.key, position);
    opened->lastSought = position + change.ordinal;
    if (error == kErrorSuccess) {
        error = m_state.Locate(*opened, record, position, entry);
    }
    m_state.reader.Pause();
    isChanged = error == kErrorFileNotFound;
    return error == kErrorSuccess ? writes.Replace(record, position, entry, change.body, place)
                                  : error;
}

EPlatformError CHistoryRevert::Compare(const CHistoryChange& change, bool& isChanged) {
    quint64 checksum = 0;
    QByteArray body;
    EPlatformError error = kErrorSuccess;
    for (qint64 record = change.record; record < change.record + change.count; ++record) {
        error = m_state.reader.ReadBody(record, body);
        if (error != kErrorSuccess) {
            break;
        }
        checksum = ChecksumOf(body, checksum);
    }
    m_state.reader.Pause();
    if (error == kErrorFileNotFound) {
        isChanged = change.IsLive();
        return kErrorSuccess;
    }
    isChanged = error == kErrorSuccess && (!change.IsLive() || checksum != change.liveChecksum);
    return error;
}

// Last record first: the last one of a key is found at once, and later records keep their places.
EPlatformError CHistoryRevert::RemoveAdded(const CHistoryChange& change,
                                           CStorageState::COpenDatabase& opened, bool& isChanged) {
    CRecordWrites writes(m_state, change.database, opened);
    for (qint64 record = change.record + change.count - 1; record >= change.record; --record) {
        int position = 0;
        CIndexEntry entry{};
        EPlatformError error = m_state.Locate(opened, record, position, entry);
        m_state.reader.Pause();
        isChanged = error == kErrorFileNotFound;
        if (error == kErrorSuccess) {
            error = writes.Remove(record, position, entry);
        }
        if (error != kErrorSuccess) {
            return error;
        }
    }
    return kErrorSuccess;
}

// Changes of single records in their stored form, with their places in the index. Each is reported
// to the engine's listeners.
#pragma once

#include "store/engine/StorageState.h"

/// Where a record is, or is to be put.
struct CRecordPlace {
    qint64 key = 0;
    int ordinal = CRecordState::kLast;  ///< past the last record of the key counts as kLast
};

/// Call within CStorageState::Write. The state and the open database outlive this.
class CRecordWrites {
  public:
    CRecordWrites(CStorageState& state, ObjectId database, CStorageState::COpenDatabase& opened)
        : m_state(state), m_database(database), m_opened(opened) {}

    /// Identifier 0 is replaced by a new one; another one must not be in use.
    EPlatformError Add(ObjectId& record, QByteArrayView body, const CRecordPlace& place);
    /// `position` and `old` are those of CStorageState::Locate, here and in Remove. A record whose
    /// key stays the same keeps its place.
    EPlatformError Replace(ObjectId record, int position, const CIndexEntry& old,
                           QByteArrayView body, const CRecordPlace& place);
    EPlatformError Remove(ObjectId record, int position, const CIndexEntry& old);

  private:
    EPlatformError InsertEntry(ObjectId record, const CRecordPlace& place);

    CStorageState& m_state;
    ObjectId m_database;
    CStorageState::COpenDatabase& m_opened;
};

#include "store/engine/ChangeFeed.h"

#include <algorithm>

bool CChangeFeed::IsWatched(qint64 database) const {
    return std::ranges::any_of(
        m_listeners, [database](const auto* listener) { return listener->Watches(database); });
}

EPlatformError CChangeFeed::Report(const CRecordChange& change) const {
    for (CChangeListener* listener : m_listeners) {
        if (!listener->Watches(change.database)) {
            continue;
        }
        if (const EPlatformError error = listener->RecordChanged(change); error != kErrorSuccess) {
            return error;
        }
    }
    return kErrorSuccess;
}

EPlatformError CChangeFeed::ReportDeletedDatabase(qint64 database) const {
    for (CChangeListener* listener : m_listeners) {
        if (const EPlatformError error = listener->DatabaseDeleted(database);
            error != kErrorSuccess) {
            return error;
        }
    }
    return kErrorSuccess;
}

void CChangeFeed::NoteStep() const {
    for (CChangeListener* listener : m_listeners) {
        listener->StepBegins();
    }
}

EPlatformError CChangeFeed::BeginUnit() const {
    for (CChangeListener* listener : m_listeners) {
        if (const EPlatformError error = listener->UnitBegins(); error != kErrorSuccess) {
            return error;
        }
    }
    return kErrorSuccess;
}

EPlatformError CChangeFeed::EndUnit() const {
    for (CChangeListener* listener : m_listeners) {
        if (const EPlatformError error = listener->UnitEnds(); error != kErrorSuccess) {
            return error;
        }
    }
    return kErrorSuccess;
}

void CChangeFeed::NoteCommit() const {
    for (CChangeListener* listener : m_listeners) {
        listener->UnitCommitted();
    }
}

void CChangeFeed::NoteAbandonment() const {
    for (CChangeListener* listener : m_listeners) {
        listener->UnitAbandoned();
    }
}

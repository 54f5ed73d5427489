#include "store/engine/IdAllocator.h"

#include "store/engine/NamedValues.h"
#include "store/engine/StorageState.h"

EPlatformError CIdAllocator::Allocate(qint64& id) {
    if (const EPlatformError error = Load(); error != kErrorSuccess) {
        return error;
    }
    id = m_isKeptLargest ? m_kept + 1 : 0;
    m_isKeptLargest = false;
    return kErrorSuccess;
}

EPlatformError CIdAllocator::KeepBeforeRemoving(qint64 id) {
    EPlatformError error = Load();
    if (error != kErrorSuccess || id <= m_kept) {
        return error;
    }
    qint64 largest = 0;
    error = ReadLargest(largest);
    if (error != kErrorSuccess || id < largest) {
        return error;
    }
    m_kept = id;
    m_isKeptLargest = true;
    return CNamedValues(m_state).WriteInUnit(0, QLatin1StringView(m_name), QString::number(id));
}

void CIdAllocator::Forget() {
    m_largest.Release();
    m_isLoaded = false;
}

EPlatformError CIdAllocator::Load() {
    if (m_isLoaded) {
        return kErrorSuccess;
    }
    qint64 largest = 0;
    std::optional<QString> kept;
    EPlatformError error = ReadLargest(largest);
    if (error == kErrorSuccess) {
        error = CNamedValues(m_state).Read(0, QLatin1StringView(m_name), kept);
    }
    if (error != kErrorSuccess) {
        return error;
    }
    m_kept = kept ? kept->toLongLong() : 0;
    m_isKeptLargest = m_kept >= largest && m_kept > 0;
    m_isLoaded = true;
    return kErrorSuccess;
}

EPlatformError CIdAllocator::ReadLargest(qint64& largest) {
    if (!m_largest.IsPrepared()) {
        if (const EPlatformError error = m_largest.Prepare(m_state.file, m_largestSql);
            error != kErrorSuccess) {
            return error;
        }
    }
    m_largest.Start({});
    largest = m_largest.Next() ? m_largest.GetInteger(0) : 0;
    return m_largest.Finish();
}

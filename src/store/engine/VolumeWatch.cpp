#include "store/engine/VolumeWatch.h"

#include <utility>

void CVolumeWatch::Attach(sqlite3_file* file, const QByteArray& path) {
    m_file = file;
    m_path = path;
    m_state = EVolumeState::Sound;
    m_stamp = StampOf(path).value_or(CFileStamp{});
    static_cast<sqlite3_io_methods&>(m_methods) = *file->pMethods;
    m_methods.original = file->pMethods;
    m_methods.watch = this;
    m_methods.xRead = Read;
    m_methods.xWrite = Write;
    m_methods.xTruncate = Truncate;
    file->pMethods = &m_methods;
}

EVolumeState CVolumeWatch::Detach() {
    if (m_file == nullptr) {
        return EVolumeState::Sound;
    }
    std::exchange(m_file, nullptr)->pMethods = m_methods.original;
    return Look();
}

EVolumeState CVolumeWatch::Look() {
    if (m_state == EVolumeState::Overwritten) {
        return m_state;
    }
    const std::optional<CFileStamp> now = StampOf(m_path);
    if (!now) {
        m_state = EVolumeState::Removed;
    } else if (!now->IsSameFile(m_stamp)) {
        m_state = EVolumeState::Replaced;
    } else {
        m_state = *now == m_stamp ? EVolumeState::Sound : EVolumeState::Overwritten;
    }
    return m_state;
}

const CVolumeWatch::CMethods& CVolumeWatch::MethodsOf(sqlite3_file* file) {
    return *static_cast<const CMethods*>(file->pMethods);
}

// Looks after the read: a write that the read has seen has changed the file's time by then.
int CVolumeWatch::Read(sqlite3_file* file, void* data, int size, sqlite3_int64 offset) {
    const CMethods& methods = MethodsOf(file);
    const int result = methods.original->xRead(file, data, size, offset);
    return methods.watch->IsOverwritten() ? SQLITE_IOERR_READ : result;
}

int CVolumeWatch::Write(sqlite3_file* file, const void* data, int size, sqlite3_int64 offset) {
    const CMethods& methods = MethodsOf(file);
    if (methods.watch->IsOverwritten()) {
        return SQLITE_IOERR_WRITE;
    }
    const int result = methods.original->xWrite(file, data, size, offset);
    methods.watch->TakeStamp();
    return result;
}

int CVolumeWatch::Truncate(sqlite3_file* file, sqlite3_int64 size) {
    const CMethods& methods = MethodsOf(file);
    if (methods.watch->IsOverwritten()) {
        return SQLITE_IOERR_TRUNCATE;
    }
    const int result = methods.original->xTruncate(file, size);
    methods.watch->TakeStamp();
    return result;
}

void CVolumeWatch::TakeStamp() {
    const std::optional<CFileStamp> now = StampOf(m_path);
    if (now && now->IsSameFile(m_stamp)) {
        m_stamp = *now;
    }
}

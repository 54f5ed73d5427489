#include "store/engine/VolumeLock.h"

#include <fcntl.h>
#include <unistd.h>

#include <QtGlobal>
#include <cerrno>

EPlatformError CVolumeLock::Take(const QByteArray& path) {
    return Lock(path, O_RDWR, F_WRLCK);
}

EPlatformError CVolumeLock::TakeToRead(const QByteArray& path) {
    return Lock(path, O_RDONLY, F_RDLCK);
}

// The byte lies beyond every byte that SQLite reads, writes or locks, since some network file
// systems make a lock keep out reads and writes as well. Where there are no such locks, SQLite's
// remains.
EPlatformError CVolumeLock::Lock(const QByteArray& path, int flags, short type) {
    Release();
    struct flock byte {};
    byte.l_type = type;
    byte.l_start = qint64{1} << 61U;
    byte.l_len = 1;
    m_descriptor = ::open(path.constData(), flags | O_NONBLOCK | O_CLOEXEC);
    const bool isTaken = m_descriptor >= 0 && ::fcntl(m_descriptor, F_OFD_SETLK, &byte) != 0 &&
                         (errno == EAGAIN || errno == EACCES);
    return isTaken ? kErrorSharingViolation : kErrorSuccess;
}

void CVolumeLock::Release() {
    if (m_descriptor >= 0) {
        ::close(m_descriptor);
        m_descriptor = -1;
    }
}

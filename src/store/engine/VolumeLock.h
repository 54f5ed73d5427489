// The lock that keeps other processes out of a volume, whatever the content of the file is.
#pragma once

#include <QByteArray>

#include "store/engine/PlatformError.h"

/// SQLite's own lock is lost as soon as anything else in this process, such as a file dialog that
/// looks for an icon, opens the file and closes it. This one stays with its descriptor.
class CVolumeLock {
  public:
    CVolumeLock() = default;
    ~CVolumeLock() { Release(); }
    CVolumeLock(const CVolumeLock&) = delete;
    CVolumeLock& operator=(const CVolumeLock&) = delete;

    /// kErrorSharingViolation when the file is locked already. A file that is missing or cannot be
    /// opened is not locked, nor is one on a file system without such locks.
    EPlatformError Take(const QByteArray& path);
    /// The same for a file that is only read, which others may read meanwhile.
    EPlatformError TakeToRead(const QByteArray& path);
    void Release();
    /// Whether a file is open, and locked where that is possible.
    [[nodiscard]] bool IsHeld() const { return m_descriptor >= 0; }

  private:
    EPlatformError Lock(const QByteArray& path, int flags, short type);

    int m_descriptor = -1;
};

// Which file a path names, and when it was last written.
#pragma once

#include <QString>
#include <optional>

/// Two stamps are equal as long as nobody writes to the file or puts another one in its place.
struct CFileStamp {
    quint64 device = 0;
    quint64 inode = 0;
    qint64 size = 0;
    qint64 modifiedSeconds = 0;      ///< since 1970
    qint64 modifiedNanoseconds = 0;  ///< in addition
    bool operator==(const CFileStamp&) const = default;

    [[nodiscard]] bool IsSameFile(const CFileStamp& other) const {
        return device == other.device && inode == other.inode;
    }
};

/// Follows symbolic links; nothing when there is no such file.
std::optional<CFileStamp> StampOf(const QByteArray& path);

// Which file a path leads to, and when it was last written.
#pragma once

#include <QString>
#include <optional>

/// Two stamps are equal as long as nobody wrote to the file or put another one in its place.
struct CFileStamp {
    quint64 device = 0;
    quint64 inode = 0;
    qint64 size = 0;
    qint64 modifiedNs = 0;  ///< nanoseconds since 1970
    bool operator==(const CFileStamp&) const = default;

    [[nodiscard]] bool IsSameFile(const CFileStamp& other) const {
        return device == other.device && inode == other.inode;
    }
};

/// Follows symbolic links; nothing when the path leads nowhere.
std::optional<CFileStamp> StampOf(const QByteArray& path);

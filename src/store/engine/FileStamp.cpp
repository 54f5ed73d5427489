#include "store/engine/FileStamp.h"

#include <sys/stat.h>

namespace {
constexpr qint64 kNanosecondsPerSecond = 1'000'000'000;
}

std::optional<CFileStamp> StampOf(const QByteArray& path) {
    struct stat status {};
    if (::stat(path.constData(), &status) != 0) {
        return std::nullopt;
    }
    return CFileStamp{status.st_dev, status.st_ino, status.st_size,
                      status.st_mtim.tv_sec * kNanosecondsPerSecond + status.st_mtim.tv_nsec};
}

#include "store/engine/FileStamp.h"

#include <sys/stat.h>

std::optional<CFileStamp> StampOf(const QByteArray& path) {
    struct stat status {};
    if (::stat(path.constData(), &status) != 0) {
        return std::nullopt;
    }
    return CFileStamp{status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec,
                      status.st_mtim.tv_nsec};
}

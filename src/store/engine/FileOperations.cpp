#include "store/engine/FileOperations.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFileInfo>
#include <QtGlobal>
#include <cerrno>

namespace {
/// A descriptor that is closed with it.
struct CDescriptor {
    explicit CDescriptor(int opened) : number(opened) {}
    ~CDescriptor() {
        if (number >= 0) {
            ::close(number);
        }
    }
    CDescriptor(const CDescriptor&) = delete;
    CDescriptor& operator=(const CDescriptor&) = delete;
    int number;
};

EPlatformError WriteAll(int to, const char* bytes, ssize_t size) {
    while (size > 0) {
        const ssize_t written = ::write(to, bytes, static_cast<std::size_t>(size));
        if (written < 0) {
            return LastFileError();
        }
        bytes += written;
        size -= written;
    }
    return kErrorSuccess;
}

EPlatformError CopyInto(int from, int to, const CopyProgress& progress) {
    struct stat status {};
    if (::fstat(from, &status) != 0) {
        return LastFileError();
    }
    QByteArray buffer(qsizetype{1} << 20U, Qt::Uninitialized);
    qint64 done = 0;
    while (true) {
        const ssize_t read = ::read(from, buffer.data(), static_cast<std::size_t>(buffer.size()));
        if (read < 0) {
            return LastFileError();
        }
        if (read == 0) {
            return ::fsync(to) == 0 ? kErrorSuccess : LastFileError();
        }
        if (const EPlatformError error = WriteAll(to, buffer.constData(), read);
            error != kErrorSuccess) {
            return error;
        }
        done += read;
        if (progress && !progress(done, status.st_size)) {
            return kErrorOperationAborted;
        }
    }
}
}  // namespace

EPlatformError LastFileError() {
    switch (errno) {
        case ENOENT:
            return kErrorFileNotFound;
        case EACCES:
        case EPERM:
        case EROFS:
        case EISDIR:
        case ENOTDIR:
            return kErrorAccessDenied;
        case EEXIST:
            return kErrorAlreadyExists;
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            return kErrorDiskFull;
        default:
            return kErrorInputOutput;
    }
}

QStringList CreateFolders(const QString& path) {
    QStringList created;
    for (QFileInfo folder(path); !folder.exists(); folder.setFile(folder.path())) {
        created.append(folder.filePath());
    }
    QDir().mkpath(path);
    return created;
}

void RemoveFolders(const QStringList& folders) {
    for (const QString& folder : folders) {
        QDir().rmdir(folder);  // fails, as it should, for a folder that is not empty
    }
}

EPlatformError SyncFolderOf(const QByteArray& path) {
    const qsizetype slash = path.lastIndexOf('/');
    const QByteArray folder = slash < 0 ? QByteArray(".") : path.first(slash + 1);
    const CDescriptor opened(::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened.number < 0) {
        return errno == EACCES ? kErrorSuccess : LastFileError();
    }
    // Some file systems cannot sync a folder, and some need not. Where names can be changed but not
    // listed, it cannot be done either.
    return ::fsync(opened.number) == 0 || errno == EINVAL ? kErrorSuccess : LastFileError();
}

EPlatformError CreatePrivateFile(const QByteArray& path) {
    constexpr mode_t kOwnerOnly = 0600;
    const int created =
        ::open(path.constData(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, kOwnerOnly);
    return created >= 0 && ::close(created) == 0 ? kErrorSuccess : LastFileError();
}

EPlatformError CopyFileBytes(const QByteArray& from, const QByteArray& to,
                             const CopyProgress& progress) {
    const CDescriptor source(::open(from.constData(), O_RDONLY | O_CLOEXEC));
    const CDescriptor target(source.number < 0 ? -1 : ::open(to.constData(), O_WRONLY | O_CLOEXEC));
    const EPlatformError error =
        target.number < 0 ? LastFileError() : CopyInto(source.number, target.number, progress);
    if (error != kErrorSuccess) {
        ::unlink(to.constData());
    }
    return error;
}

// Bad disks. Records the calls that change the files of a folder and plays them on a model of a
// disk, for what a loss of power leaves behind; or lets one call fail. Included by one test
// program, whose calls it takes over.
#pragma once

#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

#include <QByteArray>
#include <QRandomGenerator>
#include <array>
#include <cerrno>
#include <cstdarg>
#include <map>
#include <memory>
#include <vector>

enum class ECall { Create, Write, Truncate, Sync, Unlink, SyncFolder };

struct CCall {
    ECall call;
    QByteArray file;
    qint64 offset = 0;  ///< of a write; the size of a truncation
    QByteArray bytes;
};

// No objects: calls come in before main and after it. Null while nothing is recorded.
inline constinit const char* recordedFolder = nullptr;
inline constinit std::vector<CCall>* recordedCalls = nullptr;

/// The call that many calls from now fails with this error; 0 is none.
inline constinit int callsUntilFailure = 0;
inline constinit int failure = 0;

inline bool Fails() {
    if (callsUntilFailure == 0 || --callsUntilFailure > 0) {
        return false;
    }
    errno = failure;
    return true;
}

inline void Record(ECall call, const QByteArray& path, qint64 offset = 0,
                   const QByteArray& bytes = {}) {
    if (path == recordedFolder) {
        recordedCalls->push_back({ECall::SyncFolder, {}, 0, {}});
    } else if (path.startsWith(QByteArray(recordedFolder) + '/')) {
        recordedCalls->push_back({call, path.sliced(path.lastIndexOf('/') + 1), offset, bytes});
    }
}

inline void Record(ECall call, int descriptor, qint64 offset = 0, const QByteArray& bytes = {}) {
    std::array<char, 4096> path{};
    const QByteArray link = "/proc/self/fd/" + QByteArray::number(descriptor);
    const ssize_t size = readlink(link.constData(), path.data(), path.size());
    Record(call, QByteArray(path.data(), size), offset, bytes);
}

template <typename Function>
Function* Real(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

// These take the place of the C library's functions in the whole process.
extern "C" {
int open64(const char* path, int flags, ...) {
    static auto* const real = Real<decltype(open64)>("open64");
    va_list rest;
    va_start(rest, flags);
    const auto mode = (flags & O_CREAT) == 0 ? mode_t() : va_arg(rest, mode_t);
    va_end(rest);
    const int descriptor = Fails() ? -1 : real(path, flags, mode);
    if (recordedFolder != nullptr && descriptor >= 0 && (flags & O_CREAT) != 0) {
        Record(ECall::Create, descriptor);
    }
    return descriptor;
}

ssize_t pread64(int descriptor, void* bytes, size_t count, off64_t offset) {
    static auto* const real = Real<decltype(pread64)>("pread64");
    return Fails() ? -1 : real(descriptor, bytes, count, offset);
}

ssize_t pwrite64(int descriptor, const void* bytes, size_t count, off64_t offset) {
    static auto* const real = Real<decltype(pwrite64)>("pwrite64");
    const ssize_t written = Fails() ? -1 : real(descriptor, bytes, count, offset);
    if (recordedFolder != nullptr && written > 0) {
        Record(ECall::Write, descriptor, offset, {static_cast<const char*>(bytes), written});
    }
    return written;
}

int ftruncate64(int descriptor, off64_t size) noexcept {
    static auto* const real = Real<decltype(ftruncate64)>("ftruncate64");
    if (recordedFolder != nullptr) {
        Record(ECall::Truncate, descriptor, size);
    }
    return Fails() ? -1 : real(descriptor, size);
}

// Syncs are only noted: what reaches the medium is up to CDisk.
int fdatasync(int descriptor) {
    if (recordedFolder != nullptr) {
        Record(ECall::Sync, descriptor);
    }
    return Fails() ? -1 : 0;
}

int fsync(int descriptor) {
    return fdatasync(descriptor);
}

int unlink(const char* path) noexcept {
    static auto* const real = Real<decltype(unlink)>("unlink");
    if (recordedFolder != nullptr) {
        Record(ECall::Unlink, path);
    }
    return Fails() ? -1 : real(path);
}
}

/// How much of what no sync has confirmed is left when the power goes.
enum class ELeft { All, Nothing, SomeCalls, SomeSectors };

using CFolder = std::map<QByteArray, QByteArray>;

/// What is on the medium for certain and what still waits. Without a sync, calls and changes of
/// the folder reach it in any order, and writes by sectors.
class CDisk {
  public:
    void Play(const CCall& call) {
        if (call.call == ECall::SyncFolder) {
            m_syncedNames = m_names;
        } else if (call.call == ECall::Unlink) {
            m_names.erase(call.file);
        } else {
            std::shared_ptr<CFile>& file = m_names[call.file];
            if (file == nullptr) {
                file = std::make_shared<CFile>();
            }
            file->waiting.push_back(call);
            if (call.call == ECall::Sync) {
                file->synced = Left(*file, ELeft::All);
                file->waiting.clear();
            }
        }
    }

    CFolder Left(ELeft left) {
        CFolder folder;
        for (const QByteArray name : {"v.db", "v.db-journal"}) {
            const CNames& names = IsLeft(left) ? m_names : m_syncedNames;
            if (const auto found = names.find(name); found != names.end()) {
                folder[name] = Left(*found->second, left);
            }
        }
        return folder;
    }

  private:
    struct CFile {
        QByteArray synced;
        std::vector<CCall> waiting;
    };
    using CNames = std::map<QByteArray, std::shared_ptr<CFile>>;

    bool IsLeft(ELeft left) {
        return left == ELeft::All || (left != ELeft::Nothing && m_random.bounded(2) == 0);
    }

    QByteArray Left(const CFile& file, ELeft left) {
        constexpr qint64 kSector = 512;
        QByteArray bytes = file.synced;
        for (const CCall& call : file.waiting) {
            const bool isLeft = IsLeft(left);
            if (call.call == ECall::Truncate && isLeft) {
                bytes.resize(call.offset, '\0');
            }
            const qint64 end = call.offset + call.bytes.size();
            for (qint64 to = 0, from = call.offset; from < end; from = to) {
                to = std::min(end, (from / kSector + 1) * kSector);
                if (left == ELeft::SomeSectors ? IsLeft(left) : isLeft) {
                    bytes.resize(std::max<qint64>(bytes.size(), to), '\0');
                    bytes.replace(from, to - from,
                                  call.bytes.sliced(from - call.offset, to - from));
                }
            }
        }
        return bytes;
    }

    QRandomGenerator m_random{512};
    CNames m_names;
    CNames m_syncedNames;
};

#include "store/backup/VolumeReplacement.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <cstdio>

#include "store/engine/JournalCheck.h"

using namespace Qt::StringLiterals;

namespace {
bool Exists(const QByteArray& path) {
    struct stat status {};
    return ::lstat(path.constData(), &status) == 0;
}

/// A second name of the file, or a copy where a file system has no second names.
EPlatformError Duplicate(const QByteArray& from, const QByteArray& to) {
    if (::link(from.constData(), to.constData()) == 0) {
        return kErrorSuccess;
    }
    const EPlatformError error = CreatePrivateFile(to);
    return error == kErrorSuccess ? CopyFileBytes(from, to) : error;
}

/// Of a name that nobody gives a file by hand: it is removed without asking. A rename puts the file
/// in the volume's place, so it must be in the same folder.
QString UnfinishedPath(const QString& path) {
    const qsizetype name = path.lastIndexOf(u'/') + 1;
    return path.first(name) + u'.' + path.sliced(name) + u"-unfinished"_s;
}

/// The first name "<base>-kept-<date>.db" beside `path` that is free together with its journal's.
QString FreeKeptPath(const QString& path, const QDateTime& now) {
    const QFileInfo volume(path);
    const QString folder = path.left(path.lastIndexOf(u'/') + 1);
    const QString start =
        folder + volume.completeBaseName() + u"-kept-"_s + now.toString(u"yyyy-MM-dd-HHmmss"_s);
    QString kept = start + u".db"_s;
    for (int n = 2;
         Exists(QFile::encodeName(kept)) || Exists(QFile::encodeName(kept + kJournalSuffix)); ++n) {
        kept = start + u"-%1.db"_s.arg(n);
    }
    return kept;
}
}  // namespace

CVolumeReplacement::CVolumeReplacement(const QString& path, const QDateTime& now) : m_path(path) {
    if (const QFileInfo file(path); file.isSymLink() && file.exists()) {
        m_path = file.canonicalFilePath();
    }
    m_newPath = UnfinishedPath(m_path);
    m_keptPath = FreeKeptPath(m_path, now);
}

CVolumeReplacement::~CVolumeReplacement() {
    if (m_hasBegun) {
        RemoveNew();
    }
    if (m_isPlaceHeld) {
        QFile::remove(m_path);
    }
    RemoveFolders(m_createdFolders);
}

EPlatformError CVolumeReplacement::Begin(quint32 version) {
    const QByteArray path = QFile::encodeName(m_path);
    struct stat status {};
    m_hasPresent = ::stat(path.constData(), &status) == 0;
    if (m_hasPresent && !S_ISREG(status.st_mode)) {
        return kErrorAccessDenied;
    }
    if (!m_hasPresent && Exists(path)) {
        return kErrorFileNotFound;  // a link to a disk that is not there
    }
    if (!m_hasPresent) {
        if (const EPlatformError error = HoldPlace(); error != kErrorSuccess) {
            return error;
        }
    }
    if (m_hasPresent && status.st_size > 0) {
        m_presentError = m_present.Open(m_path, version);
        if (m_presentError == kErrorSharingViolation) {
            return m_presentError;
        }
    }
    EPlatformError error = kErrorSuccess;
    if (!m_present.IsOpen()) {
        error = m_lock.Take(path);
    }
    // Another process may have found the empty file before it was locked, and made it a volume.
    if (m_isPlaceHeld && (error != kErrorSuccess || QFileInfo(m_path).size() > 0)) {
        m_isPlaceHeld = false;
        error = kErrorSharingViolation;
    }
    if (error == kErrorSuccess) {
        m_hasBegun = true;
        RemoveNew();
    }
    return error;
}

// Where there is no volume, an empty file is locked: another process finds it in use.
EPlatformError CVolumeReplacement::HoldPlace() {
    m_createdFolders = CreateFolders(QFileInfo(m_path).path());
    const EPlatformError error = CreatePrivateFile(QFile::encodeName(m_path));
    m_isPlaceHeld = error == kErrorSuccess;
    return error == kErrorAlreadyExists ? kErrorSharingViolation : error;
}

EPlatformError CVolumeReplacement::CreateNew() {
    return CreatePrivateFile(QFile::encodeName(m_newPath));
}

EPlatformError CVolumeReplacement::FillNew(const QString& from, const CopyProgress& progress) {
    const QByteArray file = QFile::encodeName(from);
    const QByteArray copy = QFile::encodeName(m_newPath);
    EPlatformError error = CopyFileBytes(file, copy, progress);
    if (error == kErrorSuccess && Exists(file + kJournalSuffix.data())) {
        error = CreatePrivateFile(copy + kJournalSuffix.data());
        if (error == kErrorSuccess) {
            error =
                CopyFileBytes(file + kJournalSuffix.data(), copy + kJournalSuffix.data(), progress);
        }
    }
    return error;
}

EPlatformError CVolumeReplacement::OpenNew(CSqliteFile& copy, quint32 version) const {
    const EPlatformError error = copy.Open(m_newPath, version);
    if (const QString journal = copy.GetKeptJournal(); !journal.isEmpty()) {
        QFile::remove(journal);
    }
    return error;
}

void CVolumeReplacement::RemoveNew() const {
    QFile::remove(m_newPath);
    QFile::remove(m_newPath + kJournalSuffix);
}

EPlatformError CVolumeReplacement::KeepAside() {
    const QByteArray path = QFile::encodeName(m_path);
    const QByteArray kept = QFile::encodeName(m_keptPath);
    EPlatformError error = m_hasPresent ? Duplicate(path, kept) : kErrorSuccess;
    if (error != kErrorSuccess) {
        return error;
    }
    // Opening the volume has played its journal back.
    if (!m_present.IsOpen() && Exists(path + kJournalSuffix.data())) {
        error = Duplicate(path + kJournalSuffix.data(), kept + kJournalSuffix.data());
    }
    if (error == kErrorSuccess) {
        error = SyncFolderOf(path);
    }
    if (error != kErrorSuccess) {
        RemoveKept();
    }
    return error;
}

void CVolumeReplacement::RemoveKept() const {
    QFile::remove(m_keptPath);
    QFile::remove(m_keptPath + kJournalSuffix);
}

// The journal goes before the new file comes, or it might be played into that. The volume it
// belongs to is complete under the name that it is kept as.
EPlatformError CVolumeReplacement::Commit() {
    if (const EPlatformError error = KeepAside(); error != kErrorSuccess) {
        return error;
    }
    const QByteArray path = QFile::encodeName(m_path);
    struct stat status {};
    if (::stat(path.constData(), &status) == 0) {
        constexpr mode_t kPermissions = 0777;
        constexpr mode_t kOwnersLeast = 0600;  // the volume may have been copied from a CD
        ::chmod(QFile::encodeName(m_newPath).constData(),
                (status.st_mode & kPermissions) | kOwnersLeast);
    }
    ::unlink((path + kJournalSuffix.data()).constData());
    if (std::rename(QFile::encodeName(m_newPath).constData(), path.constData()) != 0) {
        const EPlatformError error = LastFileError();
        ::link(QFile::encodeName(m_keptPath + kJournalSuffix).constData(),
               (path + kJournalSuffix.data()).constData());
        RemoveKept();
        return error;
    }
    m_isPlaceHeld = false;
    m_isConfirmed = SyncFolderOf(path) == kErrorSuccess;
    return kErrorSuccess;
}

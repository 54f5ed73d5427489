#include "store/backup/VolumeBackups.h"

#include <sys/stat.h>
#include <sys/statvfs.h>

#include <QDir>
#include <QFileInfo>
#include <QSysInfo>
#include <algorithm>
#include <cerrno>

#include "platform/LateProgress.h"
#include "platform/Messages.h"
#include "store/engine/Checksum.h"
#include "store/engine/NamedValues.h"
#include "store/engine/VolumeCopy.h"
#include "store/records/RecordLayout.h"

using namespace Qt::StringLiterals;

namespace {
constexpr auto kDateFormat = "yyyy-MM-dd-HHmmss"_L1;
constexpr qsizetype kDateSize = 17;
constexpr auto kEnding = ".db"_L1;
/// What SaveVolumeCopy has not finished is called <name>.part or <name>.part-1.
constexpr auto kPart = ".part"_L1;

/// A file that the program has made, complete or not.
struct CNamedFile {
    QFileInfo file;
    QDateTime made;
    QString ending;
};

/// Those called <start>DATE<ending>. The volume's name may begin with a point.
std::vector<CNamedFile> FilesIn(const QString& folder, const QString& start) {
    std::vector<CNamedFile> files;
    for (const QFileInfo& file : QDir(folder).entryInfoList(QDir::Files | QDir::Hidden)) {
        const QString name = file.fileName();
        if (!name.startsWith(start)) {
            continue;
        }
        const QString rest = name.sliced(start.size());
        const auto made =
            QDateTime::fromString(rest.left(kDateSize) + u'Z', QString(kDateFormat) + u't');
        if (made.isValid()) {
            files.push_back({file, made, rest.mid(kDateSize)});
        }
    }
    return files;
}

/// Creates a folder with its parents, which only the owner can read; one that exists stays as it
/// is.
EPlatformError CreateFolder(const QString& path) {
    if (QFileInfo(path).isDir()) {
        return kErrorSuccess;
    }
    constexpr mode_t kOwnerOnly = 0700;
    const QString parent = QFileInfo(path).path();
    const bool isCreated =
        QDir().mkpath(parent) && ::mkdir(QFile::encodeName(path).constData(), kOwnerOnly) == 0;
    if (isCreated) {
        return kErrorSuccess;
    }
    return errno == EEXIST ? kErrorAccessDenied : LastFileError();  // a file is in the way
}

/// Asked of the file system itself: a list of mounted ones is not to be had everywhere.
qint64 FreeBytes(const QString& folder) {
    struct statvfs status {};
    return ::statvfs(QFile::encodeName(folder).constData(), &status) == 0
               ? static_cast<qint64>(status.f_bavail * status.f_frsize)
               : -1;
}
}  // namespace

CVolumeBackups::CVolumeBackups(CSqliteFile& volume, QString volumePath)
    : m_volume(volume), m_volumePath(std::move(volumePath)) {}

void CVolumeBackups::Start(ReportFailure report, Clock clock) {
    m_report = std::move(report);
    m_clock = std::move(clock);
    m_nextCheck = m_lastCheck = {};
}

QString CVolumeBackups::ChosenFolder() const {
    std::optional<QString> chosen;
    // When it cannot be read, the folder beside the volume serves.
    (void)CNamedValues::ReadFrom(m_volume, 0, kBackupFolderValue, chosen);
    return chosen.value_or(QString());
}

// A volume that was restored on another computer still has the folder of the first one.
QString CVolumeBackups::GetFolder() const {
    const QString chosen = ChosenFolder();
    return !chosen.isEmpty() && IsUsable(chosen) ? chosen : GetUsualFolder();
}

bool CVolumeBackups::IsUsable(const QString& folder) {
    QFileInfo existing(folder);
    while (!existing.exists() && !existing.isRoot()) {
        existing.setFile(existing.path());
    }
    return existing.isDir() && existing.isWritable();
}

// Two volumes are mostly called the same; they differ in their place, or in the computer.
QString CVolumeBackups::NameStart() const {
    const QFileInfo volume(m_volumePath);
    QString start = volume.completeBaseName() + u'-';
    if (GetFolder() == GetUsualFolder()) {
        return start;
    }
    const QString path = QDir(volume.absolutePath()).canonicalPath() + u'/' + volume.fileName();
    const quint64 place =
        ChecksumOf(QFile::encodeName(path), ChecksumOf(QSysInfo::machineUniqueId()));
    return start + u"%1-"_s.arg(static_cast<quint32>(place), 8, 16, QChar(u'0'));
}

std::vector<CBackupFile> CVolumeBackups::List() const {
    std::vector<CBackupFile> backups;
    for (const CNamedFile& named : FilesIn(GetFolder(), NameStart())) {
        if (named.ending == kEnding) {
            backups.push_back({named.file.filePath(), named.made, named.file.size()});
        }
    }
    std::ranges::sort(backups, {}, &CBackupFile::made);
    return backups;
}

EPlatformError CVolumeBackups::UnitBegins() {
    MakeDaysBackup();
    return kErrorSuccess;
}

void CVolumeBackups::MakeDaysBackup() {
    if (!IsStarted()) {
        return;
    }
    if (const QDateTime now = Now(); now < m_lastCheck || now >= m_nextCheck) {
        MakeIfDue(EBackupOccasion::FirstChange);
    }
}

QDateTime CVolumeBackups::Now() const {
    const QDateTime now = m_clock();
    return {now.date(), now.time(), Qt::UTC};
}

bool CVolumeBackups::MakeIfDue(EBackupOccasion occasion) {
    // What is there now may be anything; the command that follows says so.
    if (!IsStarted() || m_volume.CheckPlace() != kErrorSuccess) {
        return true;
    }
    const QDateTime now = Now();
    const QDateTime tomorrow = now.date().addDays(1).startOfDay(Qt::UTC);
    m_lastCheck = now;
    m_nextCheck = tomorrow;
    const std::vector<CBackupFile> backups = List();
    if (!HasAnything()) {
        return true;
    }
    if (!IsBackupDue(backups, now, occasion)) {
        const bool isOfDay = std::ranges::any_of(backups, [&now](const CBackupFile& backup) {
            return backup.made.date() == now.date();
        });
        m_nextCheck = isOfDay ? tomorrow : now.addSecs(60);
        return true;
    }
    const EPlatformError error = Make(now);
    if (error != kErrorSuccess) {
        m_report(BackupFailureText(error, GetFolder()));
    } else if (const QString chosen = ChosenFolder(); !chosen.isEmpty() && !IsUsable(chosen)) {
        m_report(FormatText("The folder '%s' cannot be written. A backup was made in '%s'."_L1,
                            {chosen, GetFolder()}));
    }
    return error != kErrorOperationAborted;
}

EPlatformError CVolumeBackups::Make(const QDateTime& now) {
    const QString folder = GetFolder();
    const bool wasThere = QFileInfo::exists(folder);
    if (const EPlatformError error = CreateFolder(folder); error != kErrorSuccess) {
        return error;
    }
    RemoveUnfinished();
    const QString path = folder + u'/' + NameStart() + now.toString(kDateFormat) + kEnding;
    EPlatformError error = SaveAs(path);
    if (error == kErrorDiskFull) {
        RemoveOld(now);  // which may make the room
        error = SaveAs(path);
    }
    if (error == kErrorSuccess) {
        RemoveOld(now);
    } else if (!wasThere) {
        QDir().rmdir(folder);  // only if it is empty
    }
    return error;
}

EPlatformError CVolumeBackups::SaveAs(const QString& path) {
    CLateProgress progress(u"Velmora: Backup"_s, u"Saving a backup..."_s);
    return SaveVolumeCopy(m_volume, path, EDamagedCopy::Removed,
                          [&](qint64 done, qint64 total) { return progress.Update(done, total); });
}

// What a killed program has left.
void CVolumeBackups::RemoveUnfinished() const {
    for (const CNamedFile& named : FilesIn(GetFolder(), NameStart())) {
        if (named.ending.startsWith(kEnding + kPart)) {
            QFile::remove(named.file.filePath());
        }
    }
}

// One that cannot be removed is tried again with the next backup.
void CVolumeBackups::RemoveOld(const QDateTime& now) const {
    const qint64 limit = BackupLimit(FreeBytes(GetFolder()));
    for (const CBackupFile& backup : BackupsToRemove(List(), now, limit)) {
        QFile::remove(backup.path);
    }
}

// The names of the nutrients are there from the start.
bool CVolumeBackups::HasAnything() const {
    CStatement read;
    if (read.Prepare(
            m_volume,
            "SELECT EXISTS(SELECT 1 FROM databases WHERE type<>?1) OR EXISTS(SELECT 1"
            " FROM blocks JOIN databases ON databases.id=blocks.database WHERE name<>?2)") !=
        kErrorSuccess) {
        return true;  // the backup finds out what is wrong
    }
    const QString names = QString::fromLatin1(kNutrientNameLayout.databaseName);
    read.Start({qint64{kCatalogueType}, QStringView(names)});
    const bool hasAnything = !read.Next() || read.GetInteger(0) != 0;
    return read.Finish() != kErrorSuccess || hasAnything;
}

QString BackupFailureText(EPlatformError error, const QString& path) {
    switch (error) {
        case kErrorCorrupt:
            return u"No backup was made: the data file is damaged."_s;
        case kErrorDiskFull:
            return FormatText("No backup was made: there is no room for it in '%s'."_L1, {path});
        case kErrorAccessDenied:
            return FormatText("No backup was made: '%s' cannot be written."_L1, {path});
        case kErrorOperationAborted:
            return u"No backup was made: it was cancelled."_s;
        case kErrorWriteFault:
            return FormatText(
                "A backup was made in '%s', but the disk reports an error: after a "
                "loss of power it may be gone."_L1,
                {path});
        default:
            return FormatText("No backup was made in '%s' (error# %d)."_L1, {path, error});
    }
}

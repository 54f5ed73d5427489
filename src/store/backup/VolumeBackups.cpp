#include "store/backup/VolumeBackups.h"

#include <sys/stat.h>
#include <sys/statvfs.h>

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <cerrno>

#include "platform/LateProgress.h"
#include "platform/Messages.h"
#include "store/engine/NamedValues.h"
#include "store/engine/VolumeCopy.h"
#include "store/records/RecordLayout.h"

using namespace Qt::StringLiterals;

namespace {
constexpr auto kDateFormat = "yyyy-MM-dd-HHmmss"_L1;
constexpr auto kEnding = ".db"_L1;

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

void CVolumeBackups::Start(TellFailure tell, Clock clock) {
    m_tell = std::move(tell);
    m_clock = std::move(clock);
    m_nextCheck = {};
}

QString CVolumeBackups::GetFolder() const {
    std::optional<QString> chosen;
    // When it cannot be read, the folder beside the volume serves.
    (void)CNamedValues::ReadFrom(m_volume, 0, kBackupFolderValue, chosen);
    return chosen && !chosen->isEmpty() ? *chosen : GetUsualFolder();
}

QString CVolumeBackups::NameStart() const {
    return QFileInfo(m_volumePath).completeBaseName() + u'-';
}

std::vector<CBackupFile> CVolumeBackups::List() const {
    std::vector<CBackupFile> backups;
    const QString start = NameStart();
    for (const QFileInfo& file : QDir(GetFolder()).entryInfoList(QDir::Files)) {
        const QString name = file.fileName();
        if (!name.startsWith(start) || !name.endsWith(kEnding)) {
            continue;
        }
        const QString date = name.sliced(start.size()).chopped(kEnding.size());
        const QDateTime made = QDateTime::fromString(date, kDateFormat);
        if (made.isValid()) {
            backups.push_back({file.filePath(), made, file.size()});
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
    if (IsStarted() && !(m_nextCheck.isValid() && m_clock() < m_nextCheck)) {
        MakeIfDue(EBackupOccasion::FirstChange);
    }
}

void CVolumeBackups::MakeIfDue(EBackupOccasion occasion) {
    // What is there now may be anything; the command that follows says so.
    if (!IsStarted() || m_volume.CheckPlace() != kErrorSuccess) {
        return;
    }
    const QDateTime now = m_clock();
    const QDateTime tomorrow = now.date().addDays(1).startOfDay();
    m_nextCheck = tomorrow;
    const std::vector<CBackupFile> backups = List();
    if (!HasAnything()) {
        return;
    }
    if (!IsBackupDue(backups, now, occasion)) {
        const bool isOfDay = std::ranges::any_of(backups, [&now](const CBackupFile& backup) {
            return backup.made.date() == now.date();
        });
        m_nextCheck = isOfDay ? tomorrow : now.addSecs(60);
        return;
    }
    const EPlatformError error = Make(now);
    if (error != kErrorSuccess) {
        m_tell(BackupFailureText(error, GetFolder()));
    }
}

EPlatformError CVolumeBackups::Make(const QDateTime& now) {
    const QString folder = GetFolder();
    if (const EPlatformError error = CreateFolder(folder); error != kErrorSuccess) {
        return error;
    }
    RemoveUnfinished();
    const EPlatformError error =
        SaveAs(folder + u'/' + NameStart() + now.toString(kDateFormat) + kEnding);
    if (error == kErrorSuccess) {
        RemoveOld(now);
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
    QDir folder(GetFolder());
    for (const QString& name : folder.entryList({NameStart() + u"*.db.part*"_s}, QDir::Files)) {
        folder.remove(name);
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
        default:
            return FormatText("No backup was made in '%s' (error# %d)."_L1, {path, error});
    }
}

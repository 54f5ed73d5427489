// When an automatic backup is due, and which ones are kept.
#pragma once

#include <QDateTime>
#include <vector>

/// A backup that was checked when it was made.
struct CBackupFile {
    QString path;
    QDateTime made;  ///< what the clock showed, as UTC: there no hour is missing
    qint64 size = 0;
};

/// What a backup is made before.
enum class EBackupOccasion {
    FirstChange,  ///< of a day
    LargeChange,  ///< an import, a purge, a restore, an upgrade
};

/// Whether a backup is to be made now: at most one an hour, and before the first change of a day if
/// there is none of that day yet.
bool IsBackupDue(const std::vector<CBackupFile>& backups, const QDateTime& now,
                 EBackupOccasion occasion);

/// The backups to remove: all but the last seven, the last one of each week for a quarter and of
/// each month for a year. Of those, the oldest also go as long as all together take more than
/// `limit` bytes. The last one is always kept. Those dated after `now` are left alone.
std::vector<CBackupFile> BackupsToRemove(std::vector<CBackupFile> backups, const QDateTime& now,
                                         qint64 limit);

/// The most bytes that backups may take together: 2 GB, or a tenth of what is free if that is less.
/// `freeBytes` is -1 when it is not known.
qint64 BackupLimit(qint64 freeBytes);

#include "store/backup/Upgrade.h"

#include <QFile>

#include "store/backup/VolumeBackups.h"
#include "store/backup/VolumeReplacement.h"
#include "store/engine/WatchedWork.h"

using namespace Qt::StringLiterals;

namespace {
EPlatformError ReadVersion(const QString& path, quint32& version) {
    QFile file(path);
    VolumeHeader header{};
    if (!file.open(QIODevice::ReadOnly) ||
        file.read(reinterpret_cast<char*>(header.data()), kVolumeHeaderSize) < 0) {
        return kErrorAccessDenied;
    }
    version = VersionIn(header);
    return kErrorSuccess;
}

/// Of the copy, which holds what the volume does. Only that it was cancelled is a failure.
EPlatformError BackUp(const CVolumeReplacement& replacement, const QDateTime& now,
                      QString& failure) {
    quint32 version = 0;
    EPlatformError error = ReadVersion(replacement.GetNewPath(), version);
    CSqliteFile copy;
    if (error == kErrorSuccess) {
        error = replacement.OpenNew(copy, version);
    }
    if (error != kErrorSuccess) {
        return error;
    }
    CVolumeBackups backups(copy, replacement.GetPath());
    backups.Start([&failure](const QString& text) { failure = text; }, [now] { return now; });
    return backups.MakeIfDue(EBackupOccasion::LargeChange) ? copy.Close() : kErrorOperationAborted;
}

EPlatformError RunSteps(CSqliteFile& file, std::span<const UpgradeStep> steps, quint32 version) {
    EPlatformError error = file.Begin();
    for (const UpgradeStep step : steps.subspan(version - 1)) {
        if (error == kErrorSuccess) {
            error = step(file);
        }
    }
    if (error == kErrorSuccess) {
        const QString setVersion = u"PRAGMA user_version=%1"_s.arg(VersionAfter(steps));
        error = file.Execute(setVersion.toLatin1().constData());
    }
    return error == kErrorSuccess ? file.Commit() : error;
}
}  // namespace

EPlatformError UpgradeNew(const CVolumeReplacement& replacement, std::span<const UpgradeStep> steps,
                          const CopyProgress& progress) {
    quint32 version = 0;
    EPlatformError error = ReadVersion(replacement.GetNewPath(), version);
    CSqliteFile copy;
    if (error == kErrorSuccess) {
        error = replacement.OpenNew(copy, version);
    }
    if (error == kErrorSuccess) {
        const CWatchedWork work(copy, progress);
        error = RunSteps(copy, steps, version);
    }
    if (error == kErrorSuccess) {
        error = copy.Close();
    }
    if (error == kErrorSuccess) {
        error = replacement.OpenNew(copy, VersionAfter(steps));
    }
    if (error == kErrorSuccess) {
        error = copy.CheckIntegrity(progress);
    }
    return error == kErrorSuccess ? copy.Close() : error;
}

EPlatformError UpgradeVolume(const QString& path, const QDateTime& now,
                             std::span<const UpgradeStep> steps, CUpgraded& upgraded,
                             const CopyProgress& progress) {
    CVolumeReplacement replacement(path, now);
    upgraded = {replacement.GetKeptPath(), {}};
    EPlatformError error = replacement.Begin(VersionAfter(steps));
    if (error == kErrorSuccess && replacement.GetPresentError() != kErrorOlderVersion) {
        error = kErrorSharingViolation;  // another program has just replaced the file
    }
    if (error == kErrorSuccess) {
        error = replacement.CreateNew();
    }
    if (error == kErrorSuccess) {
        error = replacement.FillNew(replacement.GetPath(), progress);
    }
    if (error == kErrorSuccess) {
        error = BackUp(replacement, now, upgraded.backupFailure);
    }
    if (error == kErrorSuccess) {
        error = UpgradeNew(replacement, steps, progress);
    }
    return error == kErrorSuccess ? replacement.Commit() : error;
}

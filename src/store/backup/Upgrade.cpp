#include "store/backup/Upgrade.h"

#include <QFile>

#include "store/backup/VolumeReplacement.h"

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

EPlatformError Upgrade(const QString& path, std::span<const UpgradeStep> steps) {
    quint32 version = 0;
    EPlatformError error = ReadVersion(path, version);
    CSqliteFile file;
    if (error == kErrorSuccess) {
        error = file.Open(path, version);
    }
    if (const QString journal = file.GetKeptJournal(); !journal.isEmpty()) {
        QFile::remove(journal);  // a copy of one that is not the volume's
    }
    if (error == kErrorSuccess) {
        error = RunSteps(file, steps, version);
    }
    return error == kErrorSuccess ? file.Close() : error;
}
}  // namespace

EPlatformError UpgradeVolume(const QString& path, const QDateTime& now,
                             std::span<const UpgradeStep> steps, QString& keptPath,
                             const CopyProgress& progress) {
    CVolumeReplacement replacement(path, now);
    keptPath = replacement.GetKeptPath();
    const QString copyPath = replacement.GetNewPath();
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
        error = Upgrade(copyPath, steps);
    }
    CSqliteFile copy;
    if (error == kErrorSuccess) {
        error = copy.Open(copyPath, VersionAfter(steps));
    }
    if (error == kErrorSuccess) {
        error = copy.CheckIntegrity();
    }
    if (error == kErrorSuccess) {
        error = copy.Close();
    }
    return error == kErrorSuccess ? replacement.Commit() : error;
}

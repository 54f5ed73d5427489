#include "store/backup/Restore.h"

#include <QFile>

#include "store/backup/VolumeCheck.h"
#include "store/engine/VolumeHeader.h"

using namespace Qt::StringLiterals;

namespace {
/// Of a file that is not empty: opening an empty one would make it a volume.
EPlatformError JudgeVersion(const QString& path, std::span<const UpgradeStep> steps) {
    QFile file(path);
    return OpenJudged(file, {kVolumeApplicationId, VersionAfter(steps)});
}
}  // namespace

EPlatformError CRestore::Begin(const CopyProgress& progress) {
    m_isOfFile = true;
    // What is no volume, or a newer one, is refused before anything is done.
    if (const EPlatformError error = JudgeFile(); error != kErrorSuccess) {
        return error;
    }
    m_isOfFile = false;
    if (const EPlatformError error = m_replacement.Begin(VersionAfter(m_steps));
        error != kErrorSuccess) {
        return error;
    }
    if (const EPlatformError error = m_replacement.CreateNew(); error != kErrorSuccess) {
        return error;
    }
    CVolumeLock lock;
    EPlatformError error = lock.TakeToRead(QFile::encodeName(m_file));
    if (error == kErrorSuccess) {
        error = m_replacement.FillNew(m_file, progress);
    }
    lock.Release();
    if (error == kErrorSuccess) {
        error = CheckCopy(progress);
    }
    m_isOfFile = error != kErrorDiskFull;  // the copy is beside the present volume
    return error;
}

EPlatformError CRestore::JudgeFile() const {
    const auto unfinished = StampOf(QFile::encodeName(m_replacement.GetNewPath()));
    const auto file = StampOf(QFile::encodeName(m_file));
    if (file && unfinished && file->IsSameFile(*unfinished)) {
        return kErrorAlreadyExists;
    }
    const EPlatformError error = JudgeVersion(m_file, m_steps);
    return error == kErrorOlderVersion ? kErrorSuccess : error;
}

EPlatformError CRestore::CheckCopy(const CopyProgress& progress) {
    const QString& path = m_replacement.GetNewPath();
    EPlatformError error = JudgeVersion(path, m_steps);
    if (error == kErrorOlderVersion) {
        error = UpgradeNew(m_replacement, m_steps, progress);
    }
    if (error != kErrorSuccess) {
        return error;
    }
    {
        CSqliteFile copy;
        CFindings findings;
        error = m_replacement.OpenNew(copy, VersionAfter(m_steps));
        if (error == kErrorSuccess) {
            error = CheckVolume(copy, findings, progress);
        }
        if (error != kErrorSuccess || findings.IsFileDamaged()) {
            return error == kErrorSuccess ? kErrorCorrupt : error;
        }
        m_faults = findings.CountFaults();
    }
    CStorageEngine engine;
    error = engine.Mount(path, VersionAfter(m_steps));
    if (error == kErrorSuccess) {
        error = Summarize(engine, m_summary);
    }
    return error == kErrorSuccess ? engine.Unmount() : error;
}

#include "store/backup/Restore.h"

#include <QFile>

#include "store/backup/VolumeCheck.h"
#include "store/engine/VolumeHeader.h"

using namespace Qt::StringLiterals;

EPlatformError CRestore::Begin(const CopyProgress& progress) {
    m_isOfFile = true;
    {
        // What is no volume, or a newer one, is refused before anything is done.
        QFile file(m_file);
        if (const EPlatformError error = OpenJudged(file); error != kErrorSuccess) {
            return error;
        }
    }
    m_isOfFile = false;
    if (const EPlatformError error = m_replacement.Begin(); error != kErrorSuccess) {
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

EPlatformError CRestore::CheckCopy(const CopyProgress& progress) {
    {
        CSqliteFile copy;
        CFindings findings;
        EPlatformError error = copy.Open(m_replacement.GetNewPath());
        if (const QString journal = copy.GetKeptJournal(); !journal.isEmpty()) {
            QFile::remove(journal);  // a copy of one that is not the file's
        }
        if (error == kErrorSuccess) {
            error = CheckVolume(copy, findings, progress);
        }
        if (error != kErrorSuccess || findings.IsFileDamaged()) {
            return error == kErrorSuccess ? kErrorCorrupt : error;
        }
        m_faults = findings.CountFaults();
    }
    CStorageEngine engine;
    EPlatformError error = engine.Mount(m_replacement.GetNewPath());
    if (error == kErrorSuccess) {
        error = Summarize(engine, m_summary);
    }
    return error == kErrorSuccess ? engine.Unmount() : error;
}

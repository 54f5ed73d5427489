// Puts another file in a volume's place, such that at any moment the volume's name leads to a whole
// file: the old one or the new one.
//
//     .VelmoraDb.db-unfinished                    the new file, until it is complete and checked
//     VelmoraDb-kept-2026-05-31-073000.db         the present one, kept aside first; until the last
//                                                 step it is a second name of the same file
//     VelmoraDb.db                                the present one, then the new one
#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

#include "store/engine/SqliteFile.h"

/// While it lives, no other process uses the volume.
class CVolumeReplacement {
  public:
    /// `path` is that of the volume; `now` dates what is kept aside.
    CVolumeReplacement(const QString& path, const QDateTime& now);
    /// Removes an unfinished new file, and folders that nothing was put into.
    ~CVolumeReplacement();
    CVolumeReplacement(const CVolumeReplacement&) = delete;
    CVolumeReplacement& operator=(const CVolumeReplacement&) = delete;

    /// Locks the present volume, which may be damaged or missing. kErrorSharingViolation when
    /// another process uses it; kErrorFileNotFound when the path is a link that leads nowhere.
    /// Removes what an interrupted replacement has left.
    EPlatformError Begin(quint32 version = kVolumeVersion);
    /// The present volume; not open when there is none or it could not be opened.
    [[nodiscard]] CSqliteFile& Present() { return m_present; }
    /// Why the present volume could not be opened; kErrorSuccess when it is open.
    [[nodiscard]] EPlatformError GetPresentError() const { return m_presentError; }
    [[nodiscard]] bool HasPresent() const { return m_hasPresent; }

    /// The volume itself, not a link to it.
    [[nodiscard]] const QString& GetPath() const { return m_path; }
    /// Where to make the new file.
    [[nodiscard]] const QString& GetNewPath() const { return m_newPath; }
    EPlatformError CreateNew();
    /// Copies a volume into the new file, and its journal beside that, where it is played back when
    /// the new file is opened.
    EPlatformError FillNew(const QString& from, const CopyProgress& progress);
    /// Opens the new file. A journal that does not belong to it is removed: it is a copy of one
    /// that stays beside its own.
    EPlatformError OpenNew(CSqliteFile& copy, quint32 version) const;
    /// Removes the new file, be it one that a killed process has left. Only while no other
    /// process can use the volume.
    void RemoveNew() const;
    /// Where the present volume is kept from Commit on.
    [[nodiscard]] const QString& GetKeptPath() const { return m_keptPath; }
    /// Keeps the present volume and its journal aside and puts the new file, which is closed, in
    /// its place. On failure the volume is as it was.
    EPlatformError Commit();
    /// After Commit: false when the disk reported an error instead of confirming it, so that a loss
    /// of power may bring the former volume back.
    [[nodiscard]] bool IsConfirmed() const { return m_isConfirmed; }

  private:
    EPlatformError HoldPlace();
    EPlatformError KeepAside();
    void RemoveKept() const;

    QString m_path;  ///< where a link leads to
    QString m_newPath;
    QString m_keptPath;
    QStringList m_createdFolders;
    CSqliteFile m_present;
    CVolumeLock m_lock;  ///< of a volume that cannot be opened, or of the file in its place
    EPlatformError m_presentError = kErrorSuccess;
    bool m_hasBegun = false;  ///< before, a new file is that of another process
    bool m_hasPresent = false;
    bool m_isPlaceHeld = false;  ///< by an empty file of ours
    bool m_isConfirmed = false;
};

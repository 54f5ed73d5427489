// The backups of a volume: those that the person asks for, and those that the program makes by
// itself.
#pragma once

#include <functional>

#include "store/backup/Retention.h"
#include "store/engine/ChangeFeed.h"
#include "store/engine/SqliteFile.h"

/// Named value of the volume (owner 0): the folder that the person has chosen.
inline constexpr QLatin1StringView kBackupFolderValue("backup folder");

/// Those of the program are in a folder of their own:
///
///     VelmoraDb.db-backups/VelmoraDb-2026-05-31-073000.db
///
/// In a folder of the person's choice there may be those of other volumes, so that the names there
/// also tell where the volume is: VelmoraDb-1f8a03c2-2026-05-31-073000.db
///
/// A file of such a name is complete and was checked; one that was interrupted has another name.
/// The volume's file outlives this. A backup that fails never fails the change it comes before.
class CVolumeBackups : public CChangeListener {
  public:
    using Clock = std::function<QDateTime()>;
    /// Called with why no backup could be made.
    using ReportFailure = std::function<void(const QString& text)>;

    CVolumeBackups(CSqliteFile& volume, QString volumePath);

    /// From now on, a backup is made before the first command of a day that may write.
    void Start(ReportFailure report, Clock clock = QDateTime::currentDateTime);
    void Stop() { m_report = nullptr; }
    [[nodiscard]] bool IsStarted() const { return m_report != nullptr; }

    /// Makes a backup if one is due and anything was ever stored. Call before a large change, not
    /// within a unit of work. Does nothing before Start. False when it was cancelled; that and any
    /// other failure have been reported.
    bool MakeIfDue(EBackupOccasion occasion);

    /// Saves a checked copy of the volume, see SaveVolumeCopy.
    EPlatformError SaveAs(const QString& path);

    /// Where the program's own are: in the folder that the person has chosen, if it can be used
    /// now, or the usual one.
    [[nodiscard]] QString GetFolder() const;
    /// Whether the folder can be written, or made.
    [[nodiscard]] static bool IsUsable(const QString& folder);
    /// Beside the volume.
    [[nodiscard]] QString GetUsualFolder() const {
        return m_volumePath + QLatin1String("-backups");
    }
    /// Those in it that are complete, the oldest first.
    [[nodiscard]] std::vector<CBackupFile> List() const;

    [[nodiscard]] bool Watches(qint64 /*database*/) const override { return false; }
    EPlatformError RecordChanged(const CRecordChange& /*change*/) override { return kErrorSuccess; }
    void StepBegins() override { MakeDaysBackup(); }
    /// For what is stored outside all steps, such as the widths of columns.
    EPlatformError UnitBegins() override;

  private:
    [[nodiscard]] QString ChosenFolder() const;
    void MakeDaysBackup();
    EPlatformError Make(const QDateTime& now);
    void RemoveOld(const QDateTime& now) const;
    void RemoveUnfinished() const;
    [[nodiscard]] bool HasAnything() const;
    [[nodiscard]] QString NameStart() const;
    /// What the clock shows, see CBackupFile.
    [[nodiscard]] QDateTime Now() const;

    CSqliteFile& m_volume;
    QString m_volumePath;
    ReportFailure m_report;
    Clock m_clock;
    QDateTime m_lastCheck;  ///< whether a backup is due
    QDateTime m_nextCheck;  ///< nothing before it needs a backup, unless the clock is set back
};

/// Why no backup was made in the folder, or as the file, of that path: a sentence.
QString BackupFailureText(EPlatformError error, const QString& path);

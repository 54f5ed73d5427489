// Puts a backup in the volume's place.
#pragma once

#include "store/backup/Upgrade.h"
#include "store/backup/VolumeReplacement.h"
#include "store/backup/VolumeSummary.h"

/// Begin copies and checks, Commit replaces. Nothing is changed unless Commit is called.
class CRestore {
  public:
    /// Copies the file beside the volume at `path`.
    CRestore(QString file, const QString& path, const QDateTime& now,
             std::span<const UpgradeStep> steps = kUpgradeSteps)
        : m_file(std::move(file)), m_replacement(path, now), m_steps(steps) {}

    /// Locks the volume, copies the file beside it, upgrades the copy if an older version wrote it,
    /// and checks it whole. Afterwards IsOfFile says whether the failure is about the file or about
    /// the present volume. kErrorAlreadyExists when the file has the name that the copy gets.
    EPlatformError Begin(const CopyProgress& progress = {});
    [[nodiscard]] bool IsOfFile() const { return m_isOfFile; }
    [[nodiscard]] const CVolumeSummary& GetSummary() const { return m_summary; }
    /// What the check of every record found, besides damage that refuses the file.
    [[nodiscard]] int CountFaults() const { return m_faults; }
    [[nodiscard]] CVolumeReplacement& Replacement() { return m_replacement; }
    EPlatformError Commit() { return m_replacement.Commit(); }

  private:
    EPlatformError JudgeFile() const;
    EPlatformError CheckCopy(const CopyProgress& progress);

    QString m_file;
    CVolumeReplacement m_replacement;
    std::span<const UpgradeStep> m_steps;
    CVolumeSummary m_summary;
    int m_faults = 0;
    bool m_isOfFile = false;
};

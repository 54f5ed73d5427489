// Brings a volume that an older version of the program has written up to date.
#pragma once

#include <QDateTime>
#include <QString>
#include <algorithm>
#include <array>
#include <span>

#include "store/engine/SqliteFile.h"
#include "store/engine/VolumeHeader.h"

class CVolumeReplacement;

/// Makes a volume of one version one of the next; within a transaction, which a failure rolls back.
using UpgradeStep = EPlatformError (*)(CSqliteFile& file);

/// The first is that from version 1 to version 2.
inline constexpr std::array<UpgradeStep, kVolumeVersion - 1> kUpgradeSteps{};
static_assert(std::ranges::count(kUpgradeSteps, nullptr) == 0, "A version has no step.");

/// The version of a volume after the last step.
constexpr quint32 VersionAfter(std::span<const UpgradeStep> steps) {
    return static_cast<quint32>(steps.size()) + 1;
}

struct CUpgraded {
    QString keptPath;       ///< where the former volume is
    QString backupFailure;  ///< why no backup was made; empty when there is one or none was due
};

/// Runs on the new file, a copy of a volume, all steps that it lacks, in one transaction, and
/// checks it.
EPlatformError UpgradeNew(const CVolumeReplacement& replacement, std::span<const UpgradeStep> steps,
                          const CopyProgress& progress = {});
/// Copies the volume, makes a backup if one is due, upgrades the copy, and puts it in the volume's
/// place. The volume itself is never changed: it is kept aside. On failure it is as it was.
EPlatformError UpgradeVolume(const QString& path, const QDateTime& now,
                             std::span<const UpgradeStep> steps, CUpgraded& upgraded,
                             const CopyProgress& progress = {});

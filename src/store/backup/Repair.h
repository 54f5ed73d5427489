// Takes over whatever can be read of a damaged volume into a new one.
#pragma once

#include "store/backup/VolumeReplacement.h"

struct CRepairedDatabase {
    QString name;
    int kept = 0;
    qint64 lost = 0;  ///< of those that were listed, as far as the lists can be read
};

struct CRepairSummary {
    std::vector<CRepairedDatabase> databases;
    int homeless = 0;    ///< records that can be read, but whose database is not known
    int categories = 0;  ///< made for items whose category was lost
};

/// Records keep their identifiers and their order; databases keep their identifiers. The history
/// and the counts of use start again.
class CRepair {
  public:
    explicit CRepair(CVolumeReplacement& replacement) : m_replacement(replacement) {}

    /// Writes the new volume; the replacement has begun and is committed by the caller.
    /// kErrorBadFormat when nothing can be read.
    EPlatformError Run(CRepairSummary& summary, const CopyProgress& progress = {});

  private:
    CVolumeReplacement& m_replacement;
};

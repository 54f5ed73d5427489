#include "store/backup/Retention.h"

#include <algorithm>
#include <set>

namespace {
constexpr qint64 kSecondsPerHour = 3600;
constexpr int kNewest = 7;
constexpr int kQuarterDays = 91;
constexpr int kYearDays = 365;

/// The weeks and months that have had their backup.
class CPeriods {
  public:
    /// Whether it is the first of its week within the quarter, or of its month within the year.
    bool Takes(QDate day, QDate today) {
        const qint64 age = day.daysTo(today);
        int year = 0;
        const int week = day.weekNumber(&year);
        const bool isOfWeek = m_weeks.insert({year, week}).second && age <= kQuarterDays;
        const bool isOfMonth =
            m_months.insert({day.year(), day.month()}).second && age <= kYearDays;
        return isOfWeek || isOfMonth;
    }

  private:
    std::set<std::pair<int, int>> m_weeks;
    std::set<std::pair<int, int>> m_months;
};
}  // namespace

bool IsBackupDue(const std::vector<CBackupFile>& backups, const QDateTime& now,
                 EBackupOccasion occasion) {
    return std::ranges::none_of(backups, [&](const CBackupFile& backup) {
        const bool isRecent = std::abs(backup.made.secsTo(now)) < kSecondsPerHour;
        const bool isOfDay = backup.made.date() == now.date();
        return isRecent || (occasion == EBackupOccasion::FirstChange && isOfDay);
    });
}

std::vector<CBackupFile> BackupsToRemove(std::vector<CBackupFile> backups, const QDateTime& now,
                                         qint64 limit) {
    std::erase_if(backups, [&now](const CBackupFile& backup) { return backup.made > now; });
    std::ranges::sort(backups, std::ranges::greater(), &CBackupFile::made);
    std::vector<CBackupFile> removed;
    CPeriods periods;
    int kept = 0;
    qint64 bytes = 0;
    bool isFull = false;
    for (const CBackupFile& backup : backups) {
        const bool isOfPeriod = periods.Takes(backup.made.date(), now.date());
        bool isKept = kept < kNewest || isOfPeriod;
        isFull = isFull || (isKept && kept > 0 && bytes + backup.size > limit);
        isKept = isKept && !isFull;
        if (isKept) {
            ++kept;
            bytes += backup.size;
        } else {
            removed.push_back(backup);
        }
    }
    return removed;
}

qint64 BackupLimit(qint64 freeBytes) {
    constexpr qint64 kMost = qint64{2} << 30;
    constexpr qint64 kShare = 10;
    return freeBytes < 0 ? kMost : std::min(kMost, freeBytes / kShare);
}

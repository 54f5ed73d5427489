// The dated diaries of the open profile.
#include "store/Database.h"

#include <limits>

CDayEntries CDatabase::LoadDietDay(QDate day, int capacity) {
    if (!day.isValid()) {
        return {};
    }
    return CDayEntries(ReadEntries(Diet(), {FirstMomentOf(day), LastMomentOf(day)}, capacity));
}

double CDatabase::WeightOnDate(QDate day, double fallbackKg) {
    const int count = Weight().Count();
    const FileTime dayAfter = day.isValid() ? LastMomentOf(day) + 1 : 0;
    const int found = Weight().FirstPositionInRange(dayAfter, std::numeric_limits<FileTime>::max());
    const int firstLater = found == kNoPosition ? count : found;
    CWeightEntry entry;
    for (int position = firstLater - 1; position >= 0; --position) {
        if (Weight().ReadQuietly(position, entry)) {
            return entry.GetWeightKg();
        }
    }
    for (int position = firstLater; position < count; ++position) {
        if (Weight().ReadQuietly(position, entry)) {
            return entry.GetWeightKg();
        }
    }
    return fallbackKg;
}

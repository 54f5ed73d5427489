// The dated diaries of the open profile.
#include "store/Database.h"

#include <limits>

CDayEntries CDatabase::LoadDietDay(QDate day, int capacity) {
    if (!day.isValid()) {
        return {};
    }
    std::vector<CDietEntry> entries;
    const CLeftOut leftOut = Diet().ReadList(
        {FirstMomentOf(day), LastMomentOf(day)}, [&](int /*position*/, PropertyList& properties) {
            CDietEntry entry;
            if (!entry.SetProperties(std::move(properties))) {
                return ETake::Damaged;
            }
            entries.push_back(std::move(entry));
            return std::ssize(entries) < capacity ? ETake::Taken : ETake::Last;
        });
    return {std::move(entries), leftOut};
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

#include "store/DayEntries.h"

#include "platform/Messages.h"

#include <utility>

using namespace Qt::StringLiterals;

CDayEntries::CDayEntries(CEntryRange<CDietEntry> range) : m_range(std::move(range)) {
    for (const CListed<CDietEntry>& listed : Entries()) {
        const NutrientValues values = listed.entry.GetNutrientValues();
        for (int i = 0; i < kNutrientCount; ++i) {
            m_totals[i] += values[i];
        }
    }
}

const CDietEntry* CDayEntries::GetEntry(int index) const {
    if (index < 0 || index >= Count()) {
        ShowMessage(u"Invalid index"_s);
        return nullptr;
    }
    return &Entries()[index].entry;
}

double CDayEntries::GetTotal(int nutrient) const {
    return nutrient >= 0 && nutrient < kNutrientCount ? m_totals[nutrient] : -1.0;
}

CDayEntries ReadDay(CItemDatabase<CDietEntry>& diary, QDate day, int capacity) {
    return day.isValid()
               ? CDayEntries(ReadEntries(diary, {FirstMomentOf(day), LastMomentOf(day)}, capacity))
               : CDayEntries();
}

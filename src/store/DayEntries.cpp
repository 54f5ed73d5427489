#include "store/DayEntries.h"

#include "platform/Messages.h"

#include <utility>

using namespace Qt::StringLiterals;

CDayEntries::CDayEntries(std::vector<CDietEntry> entries, CLeftOut leftOut)
    : m_entries(std::move(entries)), m_leftOut(leftOut) {
    for (const CDietEntry& entry : m_entries) {
        const NutrientValues values = entry.GetNutrientValues();
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
    return &m_entries[index];
}

double CDayEntries::GetTotal(int nutrient) const {
    return nutrient >= 0 && nutrient < kNutrientCount ? m_totals[nutrient] : -1.0;
}

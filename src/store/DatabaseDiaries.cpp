// The dated diaries of the open profile.
#include "platform/Messages.h"
#include "store/Database.h"

#include <limits>

using namespace Qt::StringLiterals;

int CDatabase::LoadDietDay(QDate day) {
    m_dietList.clear();
    m_dietTotals.fill(0.0);
    if (!day.isValid()) {
        return 0;
    }
    const FileTime first = FirstMomentOf(day);
    const FileTime last = LastMomentOf(day);
    const int expected = kDietLayout.Count();
    m_diet.ForEachFrom(
        m_diet.FirstPositionInRange(first, last), [&](int position, PropertyList& properties) {
            if (m_dietList.size() == kDietListCapacity) {
                return false;
            }
            if (std::ssize(properties) != expected) {
                ReportWrongPropertyCount(position, properties, expected);
                return false;
            }
            CDietEntry entry;
            if (!entry.SetProperties(std::move(properties)) || entry.GetMoment() < first) {
                return true;
            }
            if (entry.GetMoment() > last) {
                return false;
            }
            m_dietList.push_back(std::move(entry));
            return true;
        });
    for (const CDietEntry& entry : m_dietList) {
        const NutrientValues values = entry.GetNutrientValues();
        for (int i = 0; i < kNutrientCount; ++i) {
            m_dietTotals[i] += values[i];
        }
    }
    return GetDietCount();
}

const CDietEntry* CDatabase::GetDietEntry(int index) const {
    if (index < 0 || index >= GetDietCount()) {
        ShowMessage(u"Invalid index"_s);
        return nullptr;
    }
    return &m_dietList[index];
}

double CDatabase::GetDietTotal(int nutrient) const {
    return nutrient >= 0 && nutrient < kNutrientCount ? m_dietTotals[nutrient] : -1.0;
}

double CDatabase::WeightOnDate(QDate day, double fallbackKg) {
    const int count = m_weight.Count();
    const FileTime dayAfter = day.isValid() ? LastMomentOf(day) + 1 : 0;
    const int found = m_weight.FirstPositionInRange(dayAfter, std::numeric_limits<FileTime>::max());
    const int firstLater = found == kNoPosition ? count : found;
    CWeightEntry entry;
    for (int position = firstLater - 1; position >= 0; --position) {
        if (m_weight.ReadQuietly(position, entry)) {
            return entry.GetWeightKg();
        }
    }
    for (int position = firstLater; position < count; ++position) {
        if (m_weight.ReadQuietly(position, entry)) {
            return entry.GetWeightKg();
        }
    }
    return fallbackKg;
}

// The diet entries of one day with their totals, read together.
#pragma once

#include "store/ListedEntries.h"
#include "store/records/DiaryEntries.h"

class CDayEntries {
  public:
    CDayEntries() = default;
    explicit CDayEntries(CEntryRange<CDietEntry> range);

    [[nodiscard]] int Count() const { return static_cast<int>(m_range.entries.size()); }
    /// By date and time.
    [[nodiscard]] const ListedEntries<CDietEntry>& Entries() const { return m_range.entries; }
    /// Null with "Invalid index" outside the list.
    [[nodiscard]] const CDietEntry* GetEntry(int index) const;
    /// Sum over the entries of this list; -1.0 for an index outside 0 to 53.
    [[nodiscard]] double GetTotal(int nutrient) const;
    /// What the day has beyond this list.
    [[nodiscard]] const CLeftOut& LeftOut() const { return m_range.leftOut; }

  private:
    CEntryRange<CDietEntry> m_range;
    NutrientValues m_totals{};
};

/// The first `capacity` entries of a day; none for a day that is no date.
CDayEntries ReadDay(CItemDatabase<CDietEntry>& diary, QDate day, int capacity = kDietListCapacity);

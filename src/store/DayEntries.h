// The diet entries of one day with their totals, read together.
#pragma once

#include <vector>

#include "store/LeftOut.h"
#include "store/records/DiaryEntries.h"

class CDayEntries {
  public:
    CDayEntries() = default;
    CDayEntries(std::vector<CDietEntry> entries, CLeftOut leftOut);

    [[nodiscard]] int Count() const { return static_cast<int>(m_entries.size()); }
    /// By date and time.
    [[nodiscard]] const std::vector<CDietEntry>& Entries() const { return m_entries; }
    /// Null with "Invalid index" outside the list.
    [[nodiscard]] const CDietEntry* GetEntry(int index) const;
    /// Sum over the entries of this list; -1.0 for an index outside 0 to 53.
    [[nodiscard]] double GetTotal(int nutrient) const;
    /// What the day holds besides.
    [[nodiscard]] const CLeftOut& LeftOut() const { return m_leftOut; }

  private:
    std::vector<CDietEntry> m_entries;
    NutrientValues m_totals{};
    CLeftOut m_leftOut;
};

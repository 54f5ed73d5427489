// The amounts of nutrients of many foods.
#pragma once

#include "catalogue/tables/FoodPlaces.h"
#include "catalogue/tables/TableNutrients.h"

class CTableFolder;

/// food_nutrient.csv, whose rows may come in any order. It is read once to count the amounts of
/// each food, which checks it whole, and once more for each window of foods.
class CFoodValues {
  public:
    CFoodValues(CTableFolder& folder, const CNutrientNumbers& nutrients, CFoodPlaces& places);

    [[nodiscard]] static qint64 SizeOfTable(const CTableFolder& folder);
    /// The foods are complete. False when the table is damaged or reading was cancelled, also
    /// below.
    [[nodiscard]] bool Count();
    /// Windows that together have all foods, each with up to `mostAmounts`, but at least one food.
    [[nodiscard]] std::vector<CFoodWindow> PlanWindows(qint64 mostAmounts) const;
    [[nodiscard]] bool ReadWindow(const CFoodWindow& window);
    /// Of a food of the window; false when its energy is not known.
    [[nodiscard]] bool ValuesOf(int place, NutrientValues& values);

  private:
    /// Passes place of the food, "nutrient_id" and amount of each wanted row to `take`, which
    /// returns false when the row does not fit.
    template <typename Take>
    bool ForEachAmount(const Take& take);
    /// Of several amounts of a nutrient the largest counts, whatever their order. False when there
    /// are more than were counted.
    bool Put(int food, quint8 nutrient, double amount);

    CTableFolder& m_folder;
    const CNutrientNumbers& m_nutrients;
    CFoodPlaces& m_places;
    /// Rows of each food, at most as many as there are nutrients.
    std::vector<quint8> m_counts;
    CFoodWindow m_window;
    // Of the window: where the amounts of each food begin, and after the last one the end.
    std::vector<quint32> m_starts;
    std::vector<quint8> m_amountNutrients;  ///< places in TableNutrients, or kFree
    std::vector<double> m_amounts;
    CTableAmounts m_scratch;
};

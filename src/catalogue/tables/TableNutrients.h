// The nutrients of FoodData Central that the catalogue has, with their units.
#pragma once

#include <QStringList>
#include <array>
#include <string_view>
#include <vector>

#include "store/records/NutrientTable.h"

class CTableFolder;

/// How many nutrients of a download are wanted; each has its place.
inline constexpr int kTableNutrientCount = 45;

/// The amounts of one food, in the catalogue's units, by the places of the nutrients.
class CTableAmounts {
  public:
    void Clear() { m_isGiven.fill(false); }
    void Set(int place, double amount) {
        m_amounts[place] = amount;
        m_isGiven[place] = true;
    }
    /// False when the energy is not known.
    [[nodiscard]] bool Resolve(NutrientValues& values) const;

  private:
    std::array<double, kTableNutrientCount> m_amounts{};
    std::array<bool, kTableNutrientCount> m_isGiven{};
};

/// nutrient.csv: which nutrients of the download are wanted, and how their amounts are converted.
class CNutrientNumbers {
  public:
    /// False when the table cannot be read.
    [[nodiscard]] bool Read(CTableFolder& folder);

    /// Place of the nutrient with that "nutrient_id", which may be its number where no nutrient has
    /// it as its id; -1 for the others.
    [[nodiscard]] int PlaceOf(quint32 id) const {
        return id < m_nutrients.size() ? m_nutrients[id].place : -1;
    }
    /// In the catalogue's unit. The nutrient must have a place.
    [[nodiscard]] double Convert(quint32 id, double amount) const {
        return amount * m_nutrients[id].factor / m_nutrients[id].divisor;
    }
    /// Wanted nutrients whose unit is not known, which are left out: how many, and "323 (MG_ATE)"
    /// for the first of them.
    [[nodiscard]] int CountUnknownUnits() const { return m_unknownUnitCount; }
    [[nodiscard]] const QStringList& FirstUnknownUnits() const { return m_firstUnknownUnits; }

  private:
    struct CNutrient {
        int place = -1;
        double factor = 1;  ///< both are 1 where the units are the same: such amounts stay exact
        double divisor = 1;
    };

    void AddNutrient(quint32 id, int place, std::string_view unit);
    void AddNumbers();

    std::vector<CNutrient> m_nutrients;  ///< by "nutrient_id"
    /// By place: a nutrient has the number as its id.
    std::array<bool, kTableNutrientCount> m_isId{};
    int m_unknownUnitCount = 0;
    QStringList m_firstUnknownUnits;
};

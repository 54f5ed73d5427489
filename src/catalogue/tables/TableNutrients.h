// The nutrients of FoodData Central that the catalogue has, with their units.
#pragma once

#include <QStringList>
#include <array>
#include <string_view>
#include <vector>

#include "store/records/NutrientTable.h"

class CTableFolder;

/// A nutrient of a download as one of the catalogue's.
struct CTableNutrient {
    int number;  ///< "nutrient_nbr" of the download's nutrient.csv
    int index;   ///< in the table of nutrients
    /// Of several for the same index, those with the least choice that a food has count. If these
    /// are several, they are parts and are added up.
    int choice = 0;
    double microgramsPerIu = 0;  ///< 0: not measured in international units
};

inline constexpr int kTableNutrientCount = 43;
const std::array<CTableNutrient, kTableNutrientCount>& TableNutrients();

/// The amounts of one food, in the catalogue's units, by their places in TableNutrients.
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

    /// Place in TableNutrients of the nutrient with that "nutrient_id"; -1 for the others.
    [[nodiscard]] int PlaceOf(quint32 id) const {
        return id < m_nutrients.size() ? m_nutrients[id].place : -1;
    }
    /// In the catalogue's unit. The nutrient must have a place.
    [[nodiscard]] double Convert(quint32 id, double amount) const {
        return amount * m_nutrients[id].factor / m_nutrients[id].divisor;
    }
    /// "323 (MG_ATE)": wanted nutrients whose unit is not known, which are left out.
    [[nodiscard]] const QStringList& UnknownUnits() const { return m_unknownUnits; }

  private:
    struct CNutrient {
        int place = -1;
        double factor = 1;  ///< both are 1 where the units are the same: such amounts stay exact
        double divisor = 1;
    };

    void AddNutrient(quint32 id, int place, std::string_view unit);

    std::vector<CNutrient> m_nutrients;  ///< by "nutrient_id"
    QStringList m_unknownUnits;
};

// Units, decimal places and displayed nutrients of a profile, and the numbers they give.
#pragma once

#include <bitset>
#include <vector>

#include "app/Units.h"
#include "store/records/NutrientTable.h"

inline constexpr int kMaximumDecimals = 6;

struct CPreferences {
    EWeightUnit weightUnit = EWeightUnit::Kilograms;
    EHeightUnit heightUnit = EHeightUnit::Centimetres;
    EEnergyUnit energyUnit = EEnergyUnit::Kcal;
    int decimals = 2;  ///< 0 to kMaximumDecimals
    /// Which nutrients appear in lists, by nutrient index.
    std::bitset<kNutrientCount> displayed{0x5FULL};  // energy to fiber, and sugar
    bool operator==(const CPreferences&) const = default;

    /// A value as the lists show it: the profile's decimals, the locale's separator.
    [[nodiscard]] QString FormatNumber(double value) const;
    /// A nutrient value as shown: energy (index 0) in the energy unit.
    [[nodiscard]] QString FormatNutrient(int index, double value) const;
    /// A typed nutrient value in its stored unit; 0 for a text without a number.
    [[nodiscard]] double ReadNutrient(int index, const QString& text) const;
    /// Indexes of the displayed nutrients, ascending.
    [[nodiscard]] std::vector<int> DisplayedNutrients() const;
};

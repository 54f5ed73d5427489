// The nutrients. Every nutrient value is addressed by its index in this table.
#pragma once

#include <QLatin1StringView>
#include <QString>
#include <array>

inline constexpr int kNutrientCount = 54;
inline constexpr int kEnergyIndex = 0;  ///< stored in kcal
inline constexpr int kFirstUserNutrient = 34;
inline constexpr int kServingCount = 10;

using NutrientValues = std::array<double, kNutrientCount>;

/// The name forms of one nutrient; units are part of the names.
struct CNutrientNames {
    const char* longName;     ///< name of the record's property
    const char* displayName;  ///< default name in the NutrientNames database
    const char* shortName;    ///< narrow column header
    const char* csvName;      ///< column header of exchange files
};

/// `index` 0 to 53.
const CNutrientNames& NutrientNamesOf(int index);

/// The vocabulary of serving names, in the order offered.
inline constexpr std::array<const char*, 13> kServingUnitWords = {
    "gm",  "mg", "oz", "ml",     "tsp",   "tbsp",   "fl oz",
    "cup", "pt", "qt", "of(ea)", "piece", "serving"};

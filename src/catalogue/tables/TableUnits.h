// The units that the tables of a download are about.
#pragma once

#include <QtGlobal>
#include <string_view>

enum class EMeasure : quint8 { Unknown, Energy, Mass, Volume, InternationalUnits };

struct CTableUnit {
    EMeasure measure = EMeasure::Unknown;
    double size = 0;  ///< in kcal, micrograms or ml; international units depend on the nutrient
};
inline constexpr double kMicrogramsPerGram = 1e6;

/// The unit that a field names, in capitals or not.
CTableUnit UnitOf(std::string_view field);

#include "catalogue/tables/TableUnits.h"

#include <QLatin1StringView>
#include <algorithm>

#include "app/Units.h"

using namespace Qt::StringLiterals;

namespace {
struct CUnitName {
    QLatin1StringView name;
    CTableUnit unit;
};

/// As nutrient.csv and labels write them.
const CUnitName kNames[] = {
    {"kcal"_L1, {EMeasure::Energy, 1}},
    {"kJ"_L1, {EMeasure::Energy, KJToKcal(1)}},
    {"g"_L1, {EMeasure::Mass, kMicrogramsPerGram}},
    {"gm"_L1, {EMeasure::Mass, kMicrogramsPerGram}},
    {"grm"_L1, {EMeasure::Mass, kMicrogramsPerGram}},
    {"mg"_L1, {EMeasure::Mass, 1e3}},
    {"ug"_L1, {EMeasure::Mass, 1}},
    {"mcg"_L1, {EMeasure::Mass, 1}},
    {"ml"_L1, {EMeasure::Volume, 1}},
    {"mlt"_L1, {EMeasure::Volume, 1}},
    {"IU"_L1, {EMeasure::InternationalUnits}},
};
}  // namespace

CTableUnit UnitOf(std::string_view field) {
    const auto text =
        QLatin1StringView(field.data(), static_cast<qsizetype>(field.size())).trimmed();
    const auto* const found = std::ranges::find_if(kNames, [text](const CUnitName& known) {
        return text.compare(known.name, Qt::CaseInsensitive) == 0;
    });
    return found == std::end(kNames) ? CTableUnit() : found->unit;
}

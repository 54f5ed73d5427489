#include "catalogue/tables/TableNutrients.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string_view>

#include "catalogue/exchange/CsvFields.h"
#include "catalogue/tables/TableFolder.h"
#include "catalogue/tables/TableTexts.h"
#include "catalogue/tables/TableUnits.h"
#include "store/records/NutrientNameTable.h"

using namespace Qt::StringLiterals;

namespace {
// Micrograms per international unit.
// Vitamin A: 0.3 of retinol, 0.6 of beta-carotene and 1.2 of the other provitamin A carotenoids
// (USDA National Nutrient Database for Standard Reference, release 28, documentation, "Vitamin A").
// An activity equivalent (RAE) counts as retinol.
constexpr double kRetinolPerIu = 0.3;
constexpr double kBetaCarotenePerIu = 0.6;
constexpr double kOtherCarotenePerIu = 1.2;
// Vitamin D: 40 units are 1 microgram. Vitamin E: 0.67 mg of natural alpha-tocopherol. (NIH Office
// of Dietary Supplements, fact sheets for health professionals.)
constexpr double kVitaminDPerIu = 0.025;
constexpr double kVitaminEPerIu = 670;

/// A nutrient of a download as one of the catalogue's.
struct CTableNutrient {
    double number;  ///< "nutrient_nbr" of the download's nutrient.csv
    int index;      ///< in the table of nutrients
    /// Of several for the same index, those with the least choice that a food has count. If these
    /// are several, they are parts and are added up.
    int choice = 0;
    double microgramsPerIu = 0;  ///< 0: not measured in international units
    /// The total of the parts before it, some of which may not be given: it counts if it is more.
    bool isTotal = false;
};

// Number, index, choice, micrograms per international unit, is total.
constexpr std::array<CTableNutrient, kTableNutrientCount> kTable = {{
    {208, 0},
    {203, 1},
    {204, 2},
    {205, 3},
    {291, 4},
    {221, 5},
    {269, 6},
    {207, 7},
    {255, 8},
    {301, 9},
    {303, 10},
    {304, 11},
    {305, 12},
    {306, 13},
    {307, 14},
    {309, 15},
    {312, 16},
    {315, 17},
    {317, 18},
    {401, 19},
    {404, 20},
    {405, 21},
    {406, 22},
    {410, 23},
    {415, 24},
    {417, 25},
    {418, 26},
    {318, 27, 0, kRetinolPerIu},
    {323, 28, 0, kVitaminEPerIu},
    {328, 29, 0, kVitaminDPerIu},
    {606, 30},
    {645, 31},
    {646, 32},
    {601, 33},
    // Sugars as labels define them, which Foundation foods have instead.
    {269.3, 6, 1},
    // Energy by specific Atwater factors, by general ones, and in kJ.
    {958, 0, 1},
    {957, 0, 2},
    {268, 0, 3},
    // Vitamin A as retinol with beta-carotene, alpha-carotene and beta-cryptoxanthin, or as RAE,
    // which counts carotenes for less than their units do.
    {319, 27, 1, kRetinolPerIu},
    {321, 27, 1, kBetaCarotenePerIu},
    {322, 27, 1, kOtherCarotenePerIu},
    {334, 27, 1, kOtherCarotenePerIu},
    {320, 27, 1, kRetinolPerIu, true},
    // Vitamin E of labels.
    {340, 28, 1, kVitaminEPerIu},
    // Vitamin D in international units.
    {324, 29, 1, kVitaminDPerIu},
}};

/// The unit in an exchange name, "mg" in "Calcium(mg)".
constexpr std::string_view UnitIn(std::string_view name) {
    const size_t begin = name.find('(') + 1;
    return name.substr(begin, name.find(')') - begin);
}

/// Micrograms, or kcal, in a unit; 0 when it is not known or not one of the nutrient.
double SizeOfUnit(std::string_view text, const CTableNutrient& nutrient) {
    const CTableUnit unit = UnitOf(text);
    if (unit.measure == EMeasure::InternationalUnits) {
        return nutrient.microgramsPerIu;
    }
    const bool isEnergy = nutrient.index == kEnergyIndex;
    return unit.measure == (isEnergy ? EMeasure::Energy : EMeasure::Mass) ? unit.size : 0;
}

enum : int { kId, kUnit, kNumber };
constexpr CTableColumn kColumns[] = {{"id"}, {"unit_name"}, {"nutrient_nbr"}};
constexpr CTableLayout kLayout = {"nutrient.csv", kColumns};

/// Place of a number, "208" or "208.0", in the table; -1 for the others.
int PlaceOfNumber(std::string_view text) {
    const char* const end = text.data() + text.size();
    double number = 0;
    if (std::from_chars(text.data(), end, number).ptr != end) {
        return -1;
    }
    const auto found = std::ranges::find(kTable, number, &CTableNutrient::number);
    return found == kTable.end() ? -1 : static_cast<int>(found - kTable.begin());
}
}  // namespace

bool CTableAmounts::Resolve(NutrientValues& values) const {
    constexpr int kNone = std::numeric_limits<int>::max();
    std::array<int, kNutrientCount> choices{};
    choices.fill(kNone);
    values.fill(0);
    for (int place = 0; place < kTableNutrientCount; ++place) {
        const CTableNutrient& nutrient = kTable[place];
        if (!m_isGiven[place] || nutrient.choice > choices[nutrient.index]) {
            continue;
        }
        double& value = values[nutrient.index];
        const double parts = nutrient.choice == choices[nutrient.index] ? value : 0;
        const double amount = m_amounts[place];
        value = nutrient.isTotal ? std::max(parts, amount) : parts + amount;
        choices[nutrient.index] = nutrient.choice;
    }
    return choices[kEnergyIndex] != kNone;
}

bool CNutrientNumbers::Read(CTableFolder& folder) {
    constexpr quint32 kLargestId = 100'000;  // the wanted ones are from 1003 to 2048
    CCsvTable table = folder.Open(kLayout);
    while (table.NextRow()) {
        const int place = PlaceOfNumber(table.Field(kNumber));
        const int namesake = PlaceOfNumber(table.Field(kId));
        quint32 id = 0;
        if (namesake >= 0) {
            m_isId[namesake] = true;
        }
        if (place < 0) {
            continue;
        }
        if (!table.ReadNumber(kId, id) ||
            (id > kLargestId && !table.Refuse(u"the number of the nutrient is too large"_s))) {
            break;
        }
        AddNutrient(id, place, table.Field(kUnit));
    }
    AddNumbers();
    return folder.HasReadAll(table);
}

void CNutrientNumbers::AddNutrient(quint32 id, int place, std::string_view unit) {
    constexpr int kMostShown = 5;
    constexpr int kLongestUnit = 40;
    const CTableNutrient& nutrient = kTable[place];
    const double from = SizeOfUnit(unit, nutrient);
    if (from <= 0) {
        ++m_unknownUnitCount;
        if (m_firstUnknownUnits.size() < kMostShown) {
            m_firstUnknownUnits.append(u"%1 (%2)"_s.arg(nutrient.number)
                                           .arg(CutImportedText(TableText(unit), kLongestUnit)));
        }
        return;
    }
    const double to = SizeOfUnit(UnitIn(kNutrientNames[nutrient.index].csvName), nutrient);
    m_nutrients.resize(std::max<size_t>(m_nutrients.size(), id + 1));
    m_nutrients[id] = from == to ? CNutrient{place} : CNutrient{place, from, to};
}

/// Some downloads name the nutrient of an amount by its number.
void CNutrientNumbers::AddNumbers() {
    for (size_t id = 0; id < m_nutrients.size(); ++id) {
        const CNutrient nutrient = m_nutrients[id];
        if (nutrient.place < 0 || m_isId[nutrient.place]) {
            continue;
        }
        const auto number = static_cast<size_t>(kTable[nutrient.place].number);
        const bool isWhole = static_cast<double>(number) == kTable[nutrient.place].number;
        m_nutrients.resize(std::max(m_nutrients.size(), number + 1));
        if (isWhole && m_nutrients[number].place < 0) {
            m_nutrients[number] = nutrient;
        }
    }
}

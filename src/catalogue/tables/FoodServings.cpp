#include "catalogue/tables/FoodServings.h"

#include <algorithm>
#include <tuple>

#include "catalogue/tables/TableFolder.h"
#include "catalogue/tables/TableTexts.h"

using namespace Qt::StringLiterals;

namespace {
constexpr quint32 kUndetermined = 9999;
constexpr double kWholeGrams = 100;  ///< what the values of a food are about

enum : int { kUnitId, kUnitName };
constexpr CTableColumn kUnitColumns[] = {{"id"}, {"name"}};
constexpr CTableLayout kUnits = {"measure_unit.csv", kUnitColumns};

enum : int { kFdcId, kGrams, kAmount, kUnit, kDescription, kModifier, kOrder, kId };
constexpr CTableColumn kPortionColumns[] = {
    {"fdc_id"},
    {"gram_weight"},
    {"amount", false},
    {"measure_unit_id", false},
    {"portion_description", false},
    {"modifier", false},
    {"seq_num", false},
    {"id", false},
};
constexpr CTableLayout kPortions = {"food_portion.csv", kPortionColumns};

/// True also when the field is empty.
bool ReadIfGiven(CCsvTable& table, int column, quint32& number) {
    return table.Field(column).empty() || table.ReadNumber(column, number);
}
}  // namespace

CFoodPortions::CFoodPortions(CTableFolder& folder, CFoodPlaces& places)
    : m_folder(folder), m_places(places), m_isThere(folder.Has(kPortions)) {}

qint64 CFoodPortions::SizeOfTable(const CTableFolder& folder) {
    return folder.SizeOf(kPortions);
}

bool CFoodPortions::ReadUnits() {
    if (!m_folder.Has(kUnits)) {
        return true;
    }
    CCsvTable table = m_folder.Open(kUnits);
    quint32 id = 0;
    while (table.NextRow() && table.ReadNumber(kUnitId, id)) {
        m_units.insert(id, TableText(table.Field(kUnitName)));
    }
    m_units.remove(kUndetermined);
    return m_folder.HasReadAll(table);
}

bool CFoodPortions::ReadWindow(const CFoodWindow& window) {
    m_portions.clear();
    m_texts.Clear();
    if (!m_isThere) {
        return true;
    }
    CCsvTable table = m_folder.Open(kPortions);
    quint32 fdcId = 0;
    while (table.NextRow() && table.ReadNumber(kFdcId, fdcId)) {
        CPortion portion{.place = m_places.PlaceOf(fdcId)};
        quint32 unit = kUndetermined;
        if (portion.place < 0) {
            continue;
        }
        if (!ReadIfGiven(table, kOrder, portion.order) || !ReadIfGiven(table, kId, portion.id) ||
            !ReadIfGiven(table, kUnit, unit) ||
            !(table.Field(kGrams).empty() || table.ReadAmount(kGrams, portion.grams))) {
            break;
        }
        if (window.Contains(portion.place)) {
            portion.name =
                m_texts.Add(PortionText({.amount = TableText(table.Field(kAmount)),
                                         .unit = m_units.value(unit),
                                         .description = TableText(table.Field(kDescription)),
                                         .modifier = TableText(table.Field(kModifier))})
                                .toStdString());
            m_portions.push_back(portion);
        }
    }
    std::ranges::stable_sort(m_portions, {}, [](const CPortion& portion) {
        return std::tie(portion.place, portion.order, portion.id);
    });
    return m_folder.HasReadAll(table);
}

void CFoodPortions::SetServings(int place, const CFoodServing& label, CFoodItem& food) {
    const CFoodServing whole = {u"100 gm"_s, kWholeGrams};
    int count = 0;
    const auto add = [&](const CFoodServing& serving) {
        food.SetServingName(count, serving.name);
        food.SetServingWeight(count, serving.grams);
        ++count;
    };
    const auto addIfUsable = [&](const CFoodServing& serving) {
        if (serving.name.isEmpty() || serving.grams <= 0) {
            ++m_unusable;
        } else if (serving == whole) {
            return;  // it closes the list in any case
        } else if (count < kServingCount - 1) {
            add(serving);
        } else {
            ++m_tooMany;
        }
    };
    food.ClearServings();
    if (!label.name.isEmpty()) {
        addIfUsable(label);
    }
    auto portion = std::ranges::lower_bound(m_portions, place, {}, &CPortion::place);
    for (; portion != m_portions.end() && portion->place == place; ++portion) {
        addIfUsable({m_texts.TextOf(portion->name), portion->grams});
    }
    add(whole);
}

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
    if (!m_folder.Has(kPortions)) {
        return true;
    }
    CCsvTable table = m_folder.Open(kPortions);
    quint32 fdcId = 0;
    while (table.NextRow() && table.ReadNumber(kFdcId, fdcId)) {
        CPortion portion;
        portion.place = m_places.PlaceOf(fdcId);
        if (portion.place < 0) {
            continue;
        }
        if (!ReadPortion(table, portion)) {
            break;
        }
        if (window.Contains(portion.place)) {
            const bool isUsable = portion.serving.grams > 0 && !portion.serving.name.isEmpty();
            m_unusable += isUsable ? 0 : 1;
            if (isUsable) {
                m_portions.push_back(std::move(portion));
            }
        }
    }
    std::ranges::sort(m_portions, {}, [](const CPortion& portion) {
        return std::tie(portion.place, portion.order, portion.id);
    });
    return m_folder.HasReadAll(table);
}

bool CFoodPortions::ReadPortion(CCsvTable& table, CPortion& portion) {
    quint32 unit = kUndetermined;
    if (!ReadIfGiven(table, kOrder, portion.order) || !ReadIfGiven(table, kId, portion.id) ||
        !ReadIfGiven(table, kUnit, unit) ||
        !(table.Field(kGrams).empty() || table.ReadAmount(kGrams, portion.serving.grams))) {
        return false;
    }
    portion.serving.name = PortionText({.amount = TableText(table.Field(kAmount)),
                                        .unit = m_units.value(unit),
                                        .description = TableText(table.Field(kDescription)),
                                        .modifier = TableText(table.Field(kModifier))});
    return true;
}

void CFoodPortions::SetServings(int place, const CFoodServing& label, CFoodItem& food) {
    food.ClearServings();
    int count = 0;
    const auto add = [&](const CFoodServing& serving) {
        food.SetServingName(count, serving.name);
        food.SetServingWeight(count, serving.grams);
        ++count;
    };
    if (!label.name.isEmpty()) {
        add(label);
    }
    auto portion = std::ranges::lower_bound(m_portions, place, {}, &CPortion::place);
    for (; portion != m_portions.end() && portion->place == place; ++portion) {
        if (count < kServingCount - 1) {
            add(portion->serving);
        } else {
            ++m_tooMany;
        }
    }
    add({u"100 gm"_s, kWholeGrams});
}

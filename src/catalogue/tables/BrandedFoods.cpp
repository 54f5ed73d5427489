#include "catalogue/tables/BrandedFoods.h"

#include <algorithm>
#include <array>

#include "catalogue/exchange/CsvFields.h"
#include "catalogue/tables/FoodCategories.h"
#include "catalogue/tables/TableFolder.h"
#include "catalogue/tables/TableTexts.h"
#include "platform/NumberText.h"

using namespace Qt::StringLiterals;

namespace {
enum : int { kFdcId, kCategory, kBrand, kOwner, kSize, kUnit, kHousehold };
constexpr CTableColumn kColumns[] = {
    {"fdc_id"},
    {"branded_food_category"},
    {"brand_name", false},
    {"brand_owner", false},
    {"serving_size", false},
    {"serving_size_unit", false},
    {"household_serving_fulltext", false},
};
constexpr CTableLayout kLayout = {"branded_food.csv", kColumns};

/// How downloads write the units of servings.
constexpr std::array<QLatin1StringView, 3> kGrams = {"g"_L1, "gm"_L1, "grm"_L1};
constexpr std::array<QLatin1StringView, 2> kMillilitres = {"ml"_L1, "mlt"_L1};

bool IsOneOf(const QString& unit, std::span<const QLatin1StringView> units) {
    return std::ranges::any_of(units, [&unit](QLatin1StringView known) {
        return unit.compare(known, Qt::CaseInsensitive) == 0;
    });
}
}  // namespace

qint64 CBrandedFoods::SizeOfTable(const CTableFolder& folder) {
    return folder.SizeOf(kLayout);
}

bool CBrandedFoods::ReadWindow(const CFoodWindow& window) {
    m_window = window;
    m_texts.Clear();
    if (!m_folder.Has(kLayout)) {
        return true;
    }
    m_foods.assign(window.Count(), {});
    CCsvTable table = m_folder.Open(kLayout);
    quint32 fdcId = 0;
    while (table.NextRow() && table.ReadNumber(kFdcId, fdcId)) {
        const int place = m_places.PlaceOf(fdcId);
        if (place < 0) {
            continue;
        }
        CFood food;
        if (!(table.Field(kSize).empty() || table.ReadAmount(kSize, food.size))) {
            break;
        }
        m_categories.Need(TableText(table.Field(kCategory)));
        if (window.Contains(place)) {
            m_foods[place - window.first] = Keep(table, food.size);
        }
    }
    return m_folder.HasReadAll(table);
}

CBrandedFoods::CFood CBrandedFoods::Keep(const CCsvTable& table, double size) {
    CFood food{.size = size};
    const std::string_view brand = table.Field(kBrand);
    food.brand = m_texts.Add(brand.empty() ? table.Field(kOwner) : brand);
    food.category = m_texts.Add(table.Field(kCategory));
    food.serving = m_texts.Add(table.Field(kHousehold));
    food.unit = m_texts.Add(table.Field(kUnit));
    return food;
}

CBrandedFood CBrandedFoods::FoodOf(int place) const {
    if (m_foods.empty()) {
        return {};
    }
    const CFood& food = m_foods[place - m_window.first];
    const QString unit = m_texts.TextOf(food.unit);
    CBrandedFood found;
    found.brand = m_texts.TextOf(food.brand);
    found.category = m_texts.TextOf(food.category);
    found.isPerMl = IsOneOf(unit, kMillilitres);
    if (IsOneOf(unit, kGrams) && food.size > 0) {
        const QString household = m_texts.TextOf(food.serving);
        found.label.name =
            CutImportedText(household.isEmpty() ? ShortestNumber(food.size) + u" gm"_s : household,
                            kLongestServingName);
        found.label.grams = food.size;
    }
    return found;
}

#include "catalogue/tables/BrandedFoods.h"

#include <algorithm>

#include "catalogue/exchange/CsvFields.h"
#include "catalogue/tables/FoodCategories.h"
#include "catalogue/tables/TableFolder.h"
#include "catalogue/tables/TableTexts.h"
#include "catalogue/tables/TableUnits.h"
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
}  // namespace

CBrandedFoods::CBrandedFoods(CTableFolder& folder, CFoodPlaces& places, CFoodCategories& categories)
    : m_folder(folder),
      m_places(places),
      m_categories(categories),
      m_isThere(folder.Has(kLayout)) {}

qint64 CBrandedFoods::SizeOfTable(const CTableFolder& folder) {
    return folder.SizeOf(kLayout);
}

void CBrandedFoods::Expect(int place) {
    m_isMissing.resize(place);
    m_isMissing.push_back(true);
}

bool CBrandedFoods::ReadWindow(const CFoodWindow& window) {
    m_window = window;
    m_texts.Clear();
    if (!m_isThere) {
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
        if (place < std::ssize(m_isMissing)) {
            m_isMissing[place] = false;
        }
        if (window.Contains(place)) {
            m_foods[place - window.first] = Keep(table, food.size);
        }
    }
    if (std::ranges::find(m_isMissing, true) != m_isMissing.end()) {
        m_categories.Need({});
    }
    return m_folder.HasReadAll(table);
}

CBrandedFoods::CFood CBrandedFoods::Keep(const CCsvTable& table, double size) {
    CFood food{.size = size};
    const std::string_view brand = table.Field(kBrand);
    const bool isBlank = brand.find_first_not_of(' ') == std::string_view::npos;
    food.brand = m_texts.Add(isBlank ? table.Field(kOwner) : brand);
    food.category = m_texts.Add(table.Field(kCategory));
    food.serving = m_texts.Add(table.Field(kHousehold));
    const CTableUnit unit = UnitOf(table.Field(kUnit));
    food.isInGrams = unit.measure == EMeasure::Mass && unit.size == kMicrogramsPerGram;
    food.isPerMl = unit.measure == EMeasure::Volume;
    return food;
}

CBrandedFood CBrandedFoods::FoodOf(int place) const {
    if (m_foods.empty()) {
        return {};
    }
    const CFood& food = m_foods[place - m_window.first];
    const QString household = m_texts.TextOf(food.serving);
    CBrandedFood found;
    found.brand = m_texts.TextOf(food.brand);
    found.category = m_texts.TextOf(food.category);
    found.isPerMl = food.isPerMl;
    if (!food.isPerMl && (food.size > 0 || !household.isEmpty())) {
        found.label.name =
            CutImportedText(household.isEmpty() ? ShortestNumber(food.size) + u" gm"_s : household,
                            kLongestServingName);
        found.label.grams = food.isInGrams ? food.size : 0;
    }
    return found;
}

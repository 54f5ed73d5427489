#include "store/records/RecordLayout.h"

#include "store/records/NutrientNameTable.h"

#include <array>

namespace {
// Capacities in UTF-16 units.
constexpr int kCatalogueText = 128;
constexpr int kCategoryText = 127;
constexpr int kInstructionsText = 32767;

using enum EPropertyType;
using CText = std::array<char, 48>;  // long enough for every name built here

consteval CText Joined(const char* first, const char* second) {
    CText text{};
    std::size_t length = 0;
    for (const char* part : {first, second}) {
        for (; *part != 0; ++part) {
            text.at(length++) = *part;
        }
    }
    text.at(length) = 0;
    return text;
}

// "<prefix>1", "<prefix>2", ...
template <int count>
consteval std::array<CText, count> Numbered(const char* prefix) {
    std::array<CText, count> names{};
    for (int i = 0; i < count; ++i) {
        const int number = i + 1;
        const char digits[] = {static_cast<char>('0' + number / 10),
                               static_cast<char>('0' + number % 10), 0};
        names[i] = Joined(prefix, number < 10 ? digits + 1 : digits);
    }
    return names;
}

consteval std::array<CText, kNutrientCount> TargetNames() {
    std::array<CText, kNutrientCount> names{};
    for (int i = 0; i < kNutrientCount; ++i) {
        names[i] = Joined("Target of ", kNutrientNames[i].longName);
    }
    return names;
}

constexpr auto kServingSizeNames = Numbered<kServingCount>("Serving size ");
constexpr auto kServingWeightNames = Numbered<kServingCount>("Serving weight (gm) ");
constexpr auto kSettingNames = Numbered<80>("Setting ");
constexpr auto kTargetNames = TargetNames();

// A layout's rows, filled one after the other.
template <std::size_t size>
struct CRows {
    std::array<CPropertyDescription, size> rows{};
    std::size_t used = 0;

    constexpr void Add(EPropertyType type, const char* name, int capacity = 0) {
        rows.at(used++) = {type, name, capacity};
    }
    constexpr void Add(std::initializer_list<CPropertyDescription> list) {
        for (const CPropertyDescription& row : list) {
            rows.at(used++) = row;
        }
    }
    constexpr void AddNutrients() {
        for (const CNutrientNames& names : kNutrientNames) {
            Add(Double, names.longName);
        }
    }
    // All rows must have been filled.
    constexpr std::array<CPropertyDescription, size> Done() const {
        return used == size ? rows : throw "a layout with the wrong number of rows";
    }
};

consteval auto FoodRows() {
    CRows<77> rows;
    rows.Add({{Int32, "Category ID"}, {Text, "Name", kCatalogueText}});
    rows.Add(Text, "Type", kCatalogueText);
    rows.AddNutrients();
    for (int i = 0; i < kServingCount; ++i) {
        rows.Add(Text, kServingSizeNames[i].data(), kShortText);
        rows.Add(Double, kServingWeightNames[i].data());
    }
    return rows.Done();
}

template <std::size_t size>
constexpr void AddComposed(CRows<size>& rows) {
    rows.Add({{Int32, "Parent ID"},
              {Int32, "Item Type"},
              {Int32, "Item ID"},
              {Text, "Name", kShortText},
              {Text, "Type", kShortText}});
    rows.AddNutrients();
    rows.Add({{Text, "Serving name", kShortText}, {Double, "Serving X"}});
}

consteval auto MenuRows() {
    CRows<61> rows;
    AddComposed(rows);
    return rows.Done();
}

consteval auto RecipeRows() {
    CRows<62> rows;
    AddComposed(rows);
    rows.Add(Text, "Instructions", kInstructionsText);
    return rows.Done();
}

consteval auto ProfileRows() {
    CRows<159> rows;
    rows.Add({{Int32, "Marker"},
              {Int32, "Version"},
              {Int32, "Last tab"},
              {Int16, "Weight unit"},
              {Int16, "Height unit"},
              {Int16, "Energy unit"},
              {Int16, "Decimal places"},
              {Text, "User name", kShortText},
              {Int16, "Sex"},
              {Int16, "Birth year"},
              {Int16, "Birth month"},
              {Int16, "Birth day"},
              {Double, "Height (cm)"},
              {Int16, "Activity level"}});
    for (const CText& name : kSettingNames) {
        rows.Add(Int16, name.data());
    }
    rows.Add({{Int16, "Start year"},
              {Int16, "Start month"},
              {Int16, "Start day"},
              {Double, "Start weight (kg)"},
              {Int16, "Goal year"},
              {Int16, "Goal month"},
              {Int16, "Goal day"},
              {Double, "Goal weight (kg)"},
              {Double, "Weekly rate (kg)"},
              {Double, "Daily energy (kcal)"},
              {Int16, "Diet type"}});
    for (const CText& name : kTargetNames) {
        rows.Add(Double, name.data());
    }
    return rows.Done();
}

consteval auto DietRows() {
    CRows<62> rows;
    rows.Add({{FileTime, "Date and time"},
              {Int32, "Meal"},
              {Int32, "Kind"},
              {Text, "Category", kShortText},
              {Text, "Name", kShortText},
              {Text, "Type", kShortText}});
    rows.AddNutrients();
    rows.Add({{Text, "Serving name", kShortText}, {Double, "Amount"}});
    return rows.Done();
}

constexpr auto kFoodRows = FoodRows();
constexpr auto kMenuRows = MenuRows();
constexpr auto kRecipeRows = RecipeRows();
constexpr auto kProfileRows = ProfileRows();
constexpr auto kDietRows = DietRows();

constexpr CPropertyDescription kExerciseLibRows[] = {
    {Int32, "Category ID"},
    {Text, "Name", kCatalogueText},
    {Text, "Type", kCatalogueText},
    {Double, "Energy rate (kcal/minute)"},
    {Double, "MET"},
};

constexpr CPropertyDescription kCategoryRows[] = {
    {Int16, "Kind"},         {Int32, "Category ID"},  {Text, "Name", kCategoryText},
    {Blob, "Large picture"}, {Blob, "Small picture"},
};

constexpr CPropertyDescription kNutrientNameRows[] = {
    {Int32, "Nutrient"},
    {Int32, "Nutrient again"},
    {Text, "Name", kShortText},
};

constexpr CPropertyDescription kWeightRows[] = {
    {FileTime, "Date and time"}, {Double, "Weight (kg)"}, {Double, "Chest (cm)"},
    {Double, "Waist (cm)"},      {Double, "Hips (cm)"},   {Double, "Bicep (cm)"},
    {Double, "Forearm (cm)"},    {Double, "Thigh (cm)"},  {Double, "Calf (cm)"},
    {Double, "Body fat (%)"},    {Double, "Reserved 1"},  {Double, "Reserved 2"},
    {Double, "Reserved 3"},      {Double, "Reserved 4"},  {Double, "Reserved 5"},
};

constexpr CPropertyDescription kExercisesRows[] = {
    {FileTime, "Date and time"}, {Text, "Category", kShortText}, {Text, "Name", kShortText},
    {Text, "Type", kShortText},  {Double, "Time (minutes)"},     {Double, "Energy burned (kcal)"},
    {Double, "Reserved 1"},      {Double, "Reserved 2"},         {Double, "Reserved 3"},
    {Double, "Reserved 4"},      {Double, "Reserved 5"},
};

constexpr CPropertyDescription kViewSettingsRows[] = {
    {Int32, "Marker"},    {Int32, "Reserved"},  {Int16, "Setting 1"}, {Int16, "Setting 2"},
    {Int16, "Setting 3"}, {Int16, "Setting 4"}, {Int16, "Setting 5"}, {Int16, "Setting 6"},
};
}  // namespace

constinit const CRecordLayout kFoodLayout = {"Foods", kCatalogueType,
                                             "Cannot add food (error# %d).", kFoodRows};
constinit const CRecordLayout kMenuLayout = {"Menus", kCatalogueType,
                                             "Cannot add menu (error# %d).", kMenuRows};
constinit const CRecordLayout kRecipeLayout = {"Recipes", kCatalogueType,
                                               "Cannot add recipe (error# %d).", kRecipeRows};
constinit const CRecordLayout kExerciseLibLayout = {
    "Exlib", kCatalogueType, "Cannot add exercise (error# %d).", kExerciseLibRows};
constinit const CRecordLayout kCategoryLayout = {"Categories", kCatalogueType, "", kCategoryRows};
constinit const CRecordLayout kNutrientNameLayout = {"NutrientNames", kCatalogueType, "",
                                                     kNutrientNameRows};
constinit const CRecordLayout kProfileLayout = {"", kProfileType, "", kProfileRows};
constinit const CRecordLayout kDietLayout = {"", kDietType, "Cannot add to diet (error# %d).",
                                             kDietRows};
constinit const CRecordLayout kWeightLayout = {"", kWeightType, "Cannot add weight (error# %d).",
                                               kWeightRows};
constinit const CRecordLayout kExercisesLayout = {
    "", kExercisesType, "Cannot add exercise (error# %d).", kExercisesRows};
constinit const CRecordLayout kViewSettingsLayout = {"", kCatalogueType, "", kViewSettingsRows};

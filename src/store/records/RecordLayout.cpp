#include "store/records/RecordLayout.h"

#include "store/records/NutrientNameTable.h"

#include <array>

namespace {
// Capacities in UTF-16 units.
constexpr int kCatalogueText = 128;
constexpr int kCategoryText = 127;
constexpr int kShortText = 64;
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

// A layout's rows, filled from the front.
template <std::size_t size>
struct CRows {
    std::array<CPropertyDescription, size> rows{};
    std::size_t used = 0;

    constexpr void Add(EPropertyType type, int capacity, const char* name) {
        rows.at(used++) = {type, capacity, name};
    }
    constexpr void Add(std::initializer_list<CPropertyDescription> list) {
        for (const CPropertyDescription& row : list) {
            rows.at(used++) = row;
        }
    }
    constexpr void AddNutrients() {
        for (const CNutrientNames& names : kNutrientNames) {
            Add(Double, 0, names.longName);
        }
    }
    // All rows must have been filled.
    constexpr std::array<CPropertyDescription, size> Done() const {
        return used == size ? rows : throw "a layout with the wrong number of rows";
    }
};

consteval auto FoodRows() {
    CRows<77> rows;
    rows.Add({{Int32, 0, "Category ID"}, {Text, kCatalogueText, "Name"}});
    rows.Add(Text, kCatalogueText, "Type");
    rows.AddNutrients();
    for (int i = 0; i < kServingCount; ++i) {
        rows.Add(Text, kShortText, kServingSizeNames[i].data());
        rows.Add(Double, 0, kServingWeightNames[i].data());
    }
    return rows.Done();
}

template <std::size_t size>
constexpr void AddComposed(CRows<size>& rows) {
    rows.Add({{Int32, 0, "Parent ID"},
              {Int32, 0, "Item Type"},
              {Int32, 0, "Item ID"},
              {Text, kShortText, "Name"},
              {Text, kShortText, "Type"}});
    rows.AddNutrients();
    rows.Add({{Text, kShortText, "Serving name"}, {Double, 0, "Serving X"}});
}

consteval auto MenuRows() {
    CRows<61> rows;
    AddComposed(rows);
    return rows.Done();
}

consteval auto RecipeRows() {
    CRows<62> rows;
    AddComposed(rows);
    rows.Add(Text, kInstructionsText, "Instructions");
    return rows.Done();
}

consteval auto ProfileRows() {
    CRows<159> rows;
    rows.Add({{Int32, 0, "Marker"},
              {Int32, 0, "Version"},
              {Int32, 0, "Last tab"},
              {Int16, 0, "Weight unit"},
              {Int16, 0, "Height unit"},
              {Int16, 0, "Energy unit"},
              {Int16, 0, "Decimal places"},
              {Text, kShortText, "User name"},
              {Int16, 0, "Sex"},
              {Int16, 0, "Birth year"},
              {Int16, 0, "Birth month"},
              {Int16, 0, "Birth day"},
              {Double, 0, "Height (cm)"},
              {Int16, 0, "Activity level"}});
    for (const CText& name : kSettingNames) {
        rows.Add(Int16, 0, name.data());
    }
    rows.Add({{Int16, 0, "Start year"},
              {Int16, 0, "Start month"},
              {Int16, 0, "Start day"},
              {Double, 0, "Start weight (kg)"},
              {Int16, 0, "Goal year"},
              {Int16, 0, "Goal month"},
              {Int16, 0, "Goal day"},
              {Double, 0, "Goal weight (kg)"},
              {Double, 0, "Weekly rate (kg)"},
              {Double, 0, "Daily energy (kcal)"},
              {Int16, 0, "Diet type"}});
    for (const CText& name : kTargetNames) {
        rows.Add(Double, 0, name.data());
    }
    return rows.Done();
}

consteval auto DietRows() {
    CRows<62> rows;
    rows.Add({{FileTime, 0, "Date and time"},
              {Int32, 0, "Meal"},
              {Int32, 0, "Kind"},
              {Text, kShortText, "Category"},
              {Text, kShortText, "Name"},
              {Text, kShortText, "Type"}});
    rows.AddNutrients();
    rows.Add({{Text, kShortText, "Serving name"}, {Double, 0, "Amount"}});
    return rows.Done();
}

constexpr auto kFoodRows = FoodRows();
constexpr auto kMenuRows = MenuRows();
constexpr auto kRecipeRows = RecipeRows();
constexpr auto kProfileRows = ProfileRows();
constexpr auto kDietRows = DietRows();

constexpr CPropertyDescription kExerciseLibRows[] = {
    {Int32, 0, "Category ID"},
    {Text, kCatalogueText, "Name"},
    {Text, kCatalogueText, "Type"},
    {Double, 0, "Energy rate (kcal/minute)"},
    {Double, 0, "MET"},
};

constexpr CPropertyDescription kCategoryRows[] = {
    {Int16, 0, "Kind"},         {Int32, 0, "Category ID"},  {Text, kCategoryText, "Name"},
    {Blob, 0, "Large picture"}, {Blob, 0, "Small picture"},
};

constexpr CPropertyDescription kNutrientNameRows[] = {
    {Int32, 0, "Nutrient"},
    {Int32, 0, "Nutrient again"},
    {Text, kShortText, "Name"},
};

constexpr CPropertyDescription kWeightRows[] = {
    {FileTime, 0, "Date and time"}, {Double, 0, "Weight (kg)"}, {Double, 0, "Chest (cm)"},
    {Double, 0, "Waist (cm)"},      {Double, 0, "Hips (cm)"},   {Double, 0, "Bicep (cm)"},
    {Double, 0, "Forearm (cm)"},    {Double, 0, "Thigh (cm)"},  {Double, 0, "Calf (cm)"},
    {Double, 0, "Body fat (%)"},    {Double, 0, "Reserved 1"},  {Double, 0, "Reserved 2"},
    {Double, 0, "Reserved 3"},      {Double, 0, "Reserved 4"},  {Double, 0, "Reserved 5"},
};

constexpr CPropertyDescription kExercisesRows[] = {
    {FileTime, 0, "Date and time"}, {Text, kShortText, "Category"},
    {Text, kShortText, "Name"},     {Text, kShortText, "Type"},
    {Double, 0, "Time (minutes)"},  {Double, 0, "Energy burned (kcal)"},
    {Double, 0, "Reserved 1"},      {Double, 0, "Reserved 2"},
    {Double, 0, "Reserved 3"},      {Double, 0, "Reserved 4"},
    {Double, 0, "Reserved 5"},
};

constexpr CPropertyDescription kViewSettingsRows[] = {
    {Int32, 0, "Marker"},    {Int32, 0, "Reserved"},  {Int16, 0, "Setting 1"},
    {Int16, 0, "Setting 2"}, {Int16, 0, "Setting 3"}, {Int16, 0, "Setting 4"},
    {Int16, 0, "Setting 5"}, {Int16, 0, "Setting 6"},
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

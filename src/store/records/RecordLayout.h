// What a record of a database is made of: one description, from which the generic reader and
// writer, the count check and the limits of texts follow.
#pragma once

#include <QLatin1StringView>
#include <QString>
#include <span>

#include "store/engine/PropertyValue.h"

/// Capacity of a user's name, of the texts of diary entries, of the names of menus, recipes and
/// components, and of the names of servings, in UTF-16 units.
inline constexpr int kShortText = 64;

/// One property. Its number is its index in the layout.
struct CPropertyDescription {
    EPropertyType type;
    const char* name;  ///< for people; unique within the layout
    int capacity = 0;  ///< longest text in UTF-16 units; 0 for other types
};

/// A whole database: its fixed name (empty for the databases of a profile), type and properties.
struct CRecordLayout {
    const char* databaseName;
    quint32 databaseType;
    const char* writeFailure;  ///< "Cannot add food (error# %d)."; empty when none is shown
    std::span<const CPropertyDescription> properties;

    [[nodiscard]] int Count() const { return static_cast<int>(properties.size()); }
    [[nodiscard]] quint32 SortPropertyId() const { return PropertyId(0, properties[0].type); }
};

inline constexpr quint32 kCatalogueType = 0;
inline constexpr quint32 kProfileType = 0x1001;
inline constexpr quint32 kDietType = 0x1002;
inline constexpr quint32 kWeightType = 0x1004;
inline constexpr quint32 kExercisesType = 0x1008;

extern const CRecordLayout kFoodLayout;          ///< "Foods", 77 properties
extern const CRecordLayout kMenuLayout;          ///< "Menus", 61
extern const CRecordLayout kRecipeLayout;        ///< "Recipes", 62
extern const CRecordLayout kExerciseLibLayout;   ///< "Exlib", 5
extern const CRecordLayout kCategoryLayout;      ///< "Categories", 5
extern const CRecordLayout kNutrientNameLayout;  ///< "NutrientNames", 3
extern const CRecordLayout kProfileLayout;       ///< 159
extern const CRecordLayout kDietLayout;          ///< 62
extern const CRecordLayout kWeightLayout;        ///< 15
extern const CRecordLayout kExercisesLayout;     ///< 11
extern const CRecordLayout kViewSettingsLayout;  ///< 8, beside the items of Foods and Exlib

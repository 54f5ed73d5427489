// Which databases a volume has, and what the records of each are made of.
#pragma once

#include <array>

#include "store/records/RecordLayout.h"

/// The catalogue, in no order that matters.
inline constexpr std::array<const CRecordLayout*, 6> kCatalogueDatabases = {
    &kNutrientNameLayout, &kFoodLayout,        &kMenuLayout,
    &kRecipeLayout,       &kExerciseLibLayout, &kCategoryLayout,
};

/// One of the four databases of a profile: the suffix to its name, and its layout.
struct CProfileDatabase {
    const char* suffix;
    const CRecordLayout& layout;
};
inline constexpr std::array<CProfileDatabase, 4> kProfileDatabases = {{
    {"", kProfileLayout},
    {"_Diet", kDietLayout},
    {"_Weight", kWeightLayout},
    {"_Exercises", kExercisesLayout},
}};

/// By type, and in the catalogue by name; null for a database that no program of ours creates.
const CRecordLayout* LayoutOfDatabase(const QString& name, quint32 type);
/// The profile that a diary belongs to by its name; empty when the name is not one of a diary.
QString ProfileOfDiary(const QString& name, quint32 type);

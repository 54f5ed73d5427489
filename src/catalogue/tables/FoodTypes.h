// The data types of a download that are foods.
#pragma once

#include <string_view>

/// As food.csv names them, in the order of their bits in a set of them. Its other rows are samples
/// and what they were bought for.
inline constexpr auto kFoodTypes = "foundation_food|sr_legacy_food|survey_fndds_food|branded_food";
inline constexpr int kAllFoodTypes = 0b1111;
inline constexpr int kBrandedType = 3;
inline constexpr int kNoFood = -1;

/// Place of a data type in kFoodTypes; kNoFood for the others.
int FoodTypeOf(std::string_view type);

#include "catalogue/tables/FoodTypes.h"

#include <algorithm>
#include <array>
#include <bit>

namespace {
constexpr auto kNames = [] {
    std::array<std::string_view, std::popcount(unsigned{kAllFoodTypes})> names;
    std::string_view rest = kFoodTypes;
    for (std::string_view& name : names) {
        name = rest.substr(0, rest.find('|'));
        rest.remove_prefix(std::min(name.size() + 1, rest.size()));
    }
    return names;
}();
static_assert(kNames[kBrandedType] == "branded_food");
}  // namespace

int FoodTypeOf(std::string_view type) {
    const auto found = std::ranges::find(kNames, type);
    return found == kNames.end() ? kNoFood : static_cast<int>(found - kNames.begin());
}

// Lengths of the catalogue's texts, in UTF-16 units, that an exchange file preserves.
#pragma once

/// An import cuts longer texts.
inline constexpr int kLongestText = 127;
/// An import does not keep longer names of servings.
inline constexpr int kLongestServingName = 63;

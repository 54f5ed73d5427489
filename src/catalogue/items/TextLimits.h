// How long the texts of the catalogue may be, so that an exchange file brings them back whole.
#pragma once

/// The longest text that a file keeps whole, in UTF-16 units.
inline constexpr int kLongestText = 127;
/// A longer name of a serving does not come back.
inline constexpr int kLongestServingName = 63;

// The size of the list of a diary's entries.
#pragma once

inline constexpr int kLeastListRows = 3;

/// Height of the entry list for its share of the view, and the share for a height. Heights are in
/// logical pixels.
int EntryListHeight(int perMille, int viewHeight);
int PerMilleOf(int entryListHeight, int viewHeight);

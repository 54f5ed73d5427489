// How large the list of a diary's entries is, and its columns.
#pragma once

inline constexpr int kLeastListRows = 3;

/// Height in pixels of the entry list for its share of the view, and the share for a height.
int EntryListHeight(int perMille, int viewHeight);
int PerMilleOf(int entryListHeight, int viewHeight);

// How far an item is from the plain thing: a raw apple is one, a dried apple was made of one.
#pragma once

#include "store/search/SearchWords.h"

/// 0 for the plainest; judged by the words of the item's type.
int MadenessOf(const CFoldedWords& type);

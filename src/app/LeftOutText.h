// The sentences that say what a list leaves out.
#pragma once

#include <QString>

#include "store/LeftOut.h"

/// What a list holds: "food" and "foods".
struct CListWords {
    const char* one;
    const char* many;
};
inline constexpr CListWords kEntryWords = {"entry", "entries"};
inline constexpr CListWords kComponentWords = {"component", "components"};
inline constexpr CListWords kCategoryWords = {"category", "categories"};

/// "2 damaged foods are left out."; empty when damage has left nothing out.
QString DamageText(const CLeftOut& leftOut, const CListWords& words);
/// The same after a sentence on what a full list does not show. `fullText` is that sentence: its
/// "%s" are `shown`, the rows of the list, then the number of all, then `words.many`.
QString LeftOutText(const CLeftOut& leftOut, const CListWords& words, int shown,
                    const char* fullText);

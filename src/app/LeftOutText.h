// Sentences that say what a list leaves out.
#pragma once

#include <QStringList>

#include "store/LeftOut.h"

/// What a list shows: "food" and "foods".
struct CListWords {
    const char* one;
    const char* many;
};
inline constexpr CListWords kEntryWords = {"entry", "entries"};
inline constexpr CListWords kComponentWords = {"component", "components"};
inline constexpr CListWords kCategoryWords = {"category", "categories"};

/// The sentences that are not empty, one after the other.
QString JoinSentences(QStringList sentences);
/// "12 foods".
QString CountText(int count, const CListWords& words);
/// "2 damaged foods are left out."; empty when nothing is damaged.
QString DamageText(const CLeftOut& leftOut, const CListWords& words);
/// The same, after a sentence that says the list is full, if it is. `fullText` is that sentence;
/// its "%s" are `shown` (the list's rows), the number of all, and `words.many`.
QString LeftOutText(const CLeftOut& leftOut, const CListWords& words, int shown,
                    const char* fullText);

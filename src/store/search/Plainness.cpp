#include "store/search/Plainness.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {
/// Words that mark a thing as it is, where they are a part of the type by themselves.
constexpr std::array kPlainWords = {"brewed"_L1, "fresh"_L1, "raw"_L1};
/// The same for the first part only; further on they describe a variety ("naan, plain").
constexpr std::array kFirstPlainWords = {"plain"_L1, "whole"_L1};
/// Words that mark what was made of a thing, even where its type also has a plain word, but not
/// after a "not" ("not previously frozen").
constexpr std::array kMadeWords = {
    "canned"_L1,     "condensed"_L1, "dehydrated"_L1, "dried"_L1,      "dry"_L1,
    "evaporated"_L1, "frozen"_L1,    "imitation"_L1,  "instant"_L1,    "meatless"_L1,
    "powder"_L1,     "powdered"_L1,  "reduced"_L1,    "substitute"_L1,
};
// What a word adds to the plainness.
constexpr int kPlain = 1;
constexpr int kFirstPlain = 3;
constexpr int kMostPlain = 6;

// The results, beginning with 0 for kMostPlain.
constexpr int kNeither = kMostPlain;
constexpr int kMade = kNeither + 1;

template <std::size_t size>
bool IsOneOf(QStringView word, const std::array<QLatin1StringView, size>& words) {
    return std::ranges::any_of(words, [word](QLatin1StringView other) { return word == other; });
}
}  // namespace

int MadenessOf(const CFoldedWords& type) {
    int plainness = 0;
    bool isDenied = false;
    for (int i = 0; i < type.Count(); ++i) {
        const QStringView word = type.WordAt(i);
        const bool isFirst = i == 0 || type.PartOf(i - 1) != type.PartOf(i);
        const bool isLast = i + 1 == type.Count() || type.PartOf(i + 1) != type.PartOf(i);
        isDenied = word == "not"_L1 || (isDenied && !isFirst);
        if (!isDenied && IsOneOf(word, kMadeWords)) {
            return kMade;
        }
        if (isFirst && isLast && IsOneOf(word, kPlainWords)) {
            plainness += kPlain;
        } else if (i == 0 && isLast && IsOneOf(word, kFirstPlainWords)) {
            plainness += kFirstPlain;
        }
    }
    return kMostPlain - std::min(plainness, kMostPlain);
}

#include "store/search/SearchWords.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
constexpr qsizetype kShortestPlural = 4;
constexpr qsizetype kShortestNear = 4;

bool IsAscii(QStringView text) {
    return std::ranges::all_of(text, [](QChar c) { return c.unicode() < 0x80; });
}

/// Letters that Unicode does not take apart into a letter and its accent.
struct CLetter {
    char16_t from;
    const char* to;
};
constexpr CLetter kLetters[] = {
    {u'\u00DF', "ss"}, {u'\u00E6', "ae"}, {u'\u00F0', "d"}, {u'\u00F8', "o"},  {u'\u00FE', "th"},
    {u'\u0111', "d"},  {u'\u0131', "i"},  {u'\u0142', "l"}, {u'\u0153', "oe"},
};

// Half of a character outside the basic plane counts as a letter, so that such characters can be
// searched for.
bool IsWordCharacter(QChar c) {
    return c.isLetterOrNumber() || c.isSurrogate();
}

bool IsApostrophe(QChar c) {
    return c == u'\'' || c == u'\u2019' || c == u'\u02BC';
}

bool IsPartEnd(QChar c) {
    return c == u',' || c == u';' || c == u'(' || c == u')';
}

/// Nouns whose plural changes more than its end.
struct CPlural {
    QLatin1StringView plural;
    QLatin1StringView singular;
};
constexpr CPlural kPlurals[] = {
    {"calves"_L1, "calf"_L1},
    {"halves"_L1, "half"_L1},
    {"leaves"_L1, "leaf"_L1},
    {"loaves"_L1, "loaf"_L1},
};

/// Whether a plural adds "es" to a noun with that end. The "e" then also goes where it belongs to
/// the singular ("cheese"), so that both ways of reading "cheeses" give the same stem.
bool TakesEs(QStringView noun) {
    constexpr QLatin1StringView kEnds[] = {"s"_L1, "x"_L1, "z"_L1, "ch"_L1, "sh"_L1, "o"_L1};
    return std::ranges::any_of(kEnds,
                               [&noun](QLatin1StringView end) { return noun.endsWith(end); });
}

/// Whether `text` is `word`, or its beginning, but for one letter wrong, added, missing or swapped
/// with its neighbour.
bool DiffersInOneLetter(QStringView text, QStringView word, bool isBeginning) {
    const auto same = [isBeginning](QStringView rest, QStringView of) {
        return isBeginning ? of.startsWith(rest) : of == rest;
    };
    const qsizetype most = std::min(text.size(), word.size());
    qsizetype at = 0;
    while (at < most && text[at] == word[at]) {
        ++at;
    }
    const QStringView left = text.sliced(at);
    const QStringView right = word.sliced(at);
    if (left.isEmpty()) {
        return isBeginning || right.size() <= 1;
    }
    if (same(left.sliced(1), right)) {
        return true;  // added
    }
    if (right.isEmpty()) {
        return false;
    }
    if (same(left.sliced(1), right.sliced(1)) || same(left, right.sliced(1))) {
        return true;  // wrong or missing
    }
    return left.size() > 1 && right.size() > 1 && left[0] == right[1] && left[1] == right[0] &&
           same(left.sliced(2), right.sliced(2));
}

bool HasDigit(QStringView word) {
    return std::ranges::any_of(word, [](QChar c) { return c.isDigit(); });
}
}  // namespace

void CFoldedWords::Assign(QStringView text) {
    Fold(text);
    m_places.clear();
    Split();
}

QStringView CFoldedWords::WordAt(int index) const {
    return QStringView(m_text).sliced(m_places[index].first, m_places[index].length);
}

void CFoldedWords::Fold(QStringView text) {
    m_text.resize(0);
    if (IsAscii(text)) {
        m_text.append(text);
        for (QChar& c : m_text) {
            c = c >= u'A' && c <= u'Z' ? QChar(c.unicode() + (u'a' - u'A')) : c;
        }
        return;
    }
    const QString apart = text.toString().normalized(QString::NormalizationForm_KD).toCaseFolded();
    for (const QChar c : apart) {
        const auto* letter = std::ranges::find(kLetters, c.unicode(), &CLetter::from);
        if (letter != std::end(kLetters)) {
            m_text += QLatin1StringView(letter->to);
        } else if (!c.isMark()) {
            m_text += c;
        }
    }
}

void CFoldedWords::Split() {
    const qsizetype size = m_text.size();
    int part = 0;
    qsizetype at = 0;
    while (at < size) {
        if (!IsWordCharacter(m_text[at])) {
            part += IsPartEnd(m_text[at]) && !m_places.empty() && m_places.back().part == part;
            ++at;
            continue;
        }
        const qsizetype first = at;
        while (at < size && IsWordCharacter(m_text[at])) {
            ++at;
        }
        if (at < size && m_text[at] == u'%' && m_text[at - 1].isDigit()) {
            ++at;
        }
        m_places.push_back({first, at - first, part});
        const bool isPossessive = at + 1 < size && IsApostrophe(m_text[at]) &&
                                  m_text[at + 1] == u's' &&
                                  (at + 2 == size || !IsWordCharacter(m_text[at + 2]));
        at += isPossessive ? 2 : 0;
    }
}

QString StemOf(QStringView word) {
    for (const CPlural& row : kPlurals) {
        if (word == row.plural) {
            return row.singular;
        }
    }
    QString stem = word.toString();
    if (stem.size() < kShortestPlural) {
        return stem;
    }
    if (stem.endsWith(u's') && !stem.endsWith("ss"_L1) && !stem.endsWith("us"_L1)) {
        stem.chop(1);
    }
    // "cookie" and "berries" end alike once the "s" is gone; "pie" keeps its end.
    if (stem.size() >= kShortestPlural && stem.endsWith("ie"_L1)) {
        stem.chop(2);
        stem += u'y';
    } else if (stem.size() >= kShortestPlural && stem.endsWith(u'e') &&
               TakesEs(QStringView(stem).chopped(1))) {
        stem.chop(1);
    }
    return stem;
}

EWordMatch MatchWord(const CStemmedWord& query, const CStemmedWord& word, bool mayBeNear) {
    // A single letter is more often a word just begun than the "M" of a brand.
    const bool isLetter =
        query.text.size() == 1 && query.text.front() >= u'a' && query.text.front() <= u'z';
    if (query.stem == word.stem && !isLetter) {
        return EWordMatch::Whole;
    }
    if (word.text.startsWith(query.text)) {
        return EWordMatch::Beginning;
    }
    if (!mayBeNear || query.text.size() < kShortestNear || HasDigit(query.text)) {
        return EWordMatch::None;
    }
    if (DiffersInOneLetter(query.text, word.text, false) ||
        DiffersInOneLetter(query.stem, word.stem, false)) {
        return EWordMatch::NearWhole;
    }
    return DiffersInOneLetter(query.text, word.text, true) ? EWordMatch::NearBeginning
                                                           : EWordMatch::None;
}

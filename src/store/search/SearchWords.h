// The words of a text as the search compares them: without case, accents and English plurals.
#pragma once

#include <QString>
#include <QStringView>
#include <vector>

/// A word of a folded text, and the part of the text that it is in: parts are counted from 0 and
/// separated by commas, semicolons and parentheses.
struct CWordPlace {
    qsizetype first;
    qsizetype length;
    int part;
};

/// The folded words of a text. Folding takes away case and accents and writes ligatures out. A word
/// is a run of letters and digits; a percent sign after a digit belongs to it ("2%"), a possessive
/// "'s" is dropped ("Campbell's" is "campbell").
class CFoldedWords {
  public:
    CFoldedWords() = default;
    explicit CFoldedWords(QStringView text) { Assign(text); }
    /// Replaces the text, reusing its memory.
    void Assign(QStringView text);

    [[nodiscard]] int Count() const { return static_cast<int>(m_places.size()); }
    /// Valid until the next Assign.
    [[nodiscard]] QStringView WordAt(int index) const;
    [[nodiscard]] int PartOf(int index) const { return m_places[index].part; }

  private:
    void Fold(QStringView text);
    void Split();

    QString m_text;
    std::vector<CWordPlace> m_places;
};

/// The same for the singular and the plural of an English noun: for "berry" and "berries", "tomato"
/// and "tomatoes", "glass" and "glasses". Words of up to three letters and words ending in "ss" or
/// "us" ("gas", "hummus") are not plurals. `word` is folded.
QString StemOf(QStringView word);

/// How a word of a query matches a word of an item, the best first.
enum class EWordMatch : quint8 {
    Whole,          ///< the same word of more than one letter, or its plural or singular
    Beginning,      ///< the beginning of the word
    NearWhole,      ///< the same word but for one letter
    NearBeginning,  ///< the beginning of the word but for one letter
    None,
};
inline constexpr int kWordMatchCount = static_cast<int>(EWordMatch::None);
constexpr bool IsBeginning(EWordMatch match) {
    return match == EWordMatch::Beginning || match == EWordMatch::NearBeginning;
}
constexpr bool IsNear(EWordMatch match) {
    return match == EWordMatch::NearWhole || match == EWordMatch::NearBeginning;
}

/// A word with its stem.
struct CStemmedWord {
    QStringView text;
    QStringView stem;
};
/// `mayBeNear` also finds words with one letter wrong, missing, added or swapped with its
/// neighbour, when the query's word has at least four characters and no digit.
EWordMatch MatchWord(const CStemmedWord& query, const CStemmedWord& word, bool mayBeNear);

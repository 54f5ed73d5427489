// One query over the search index.
#pragma once

#include <array>
#include <compare>

#include "store/search/SearchIndex.h"

/// Lives as long as one call of CSearchIndex. First judges each word of the dictionary against each
/// word of the query, then looks at the items one after the other.
class CSearchRun {
  public:
    CSearchRun(const CSearchIndex& index, const CIndexQuery& query);
    CSearchMatches Find();
    CSearchMatches FindWeighted();

  private:
    using CItem = CSearchIndex::CItem;
    using Mask = quint16;                  ///< one bit for each word of the query
    static constexpr int kMostWords = 16;  ///< of a query; the others are ignored

    // Where an item has a word, the best place first.
    enum EField : int { kInName, kIsFirstPart, kInFirstPart, kInType, kInCategory, kFieldCount };
    enum ENameFit : int { kNameIsQuery, kNameIsPartOfQuery, kOtherName };

    /// Which words of the query a word of the dictionary matches, by EWordMatch.
    struct CJudgement {
        std::array<Mask, kWordMatchCount> matches{};
        Mask same = 0;  ///< letter by letter, not just as its plural

        [[nodiscard]] Mask Whole() const {
            return matches[static_cast<int>(EWordMatch::Whole)] |
                   matches[static_cast<int>(EWordMatch::NearWhole)];
        }
    };
    /// The words of the query that an item has, by EWordMatch and field.
    struct CFields {
        std::array<std::array<Mask, kFieldCount>, kWordMatchCount> found{};
        Mask same = 0;
        ENameFit nameFit = kOtherName;
    };
    /// What items are sorted by, in this order; the least is the best.
    struct CRank {
        int nearWords = 0;   ///< of the query, matched but for one letter
        int nameFit = 0;     ///< see ENameFit
        int beginnings = 0;  ///< words of the query that match only a beginning
        int fields = 0;      ///< sum over the words of the query
        quint64 lightness = 0;
        int madeness = 0;
        int otherForms = 0;  ///< words of the query that the type has in another number
        int length = 0;
        ECatalogueKind kind{};
        qint32 categoryId = 0;
        ObjectId record = 0;
        // The check takes the comparison that is generated for one with a null pointer.
        // NOLINTNEXTLINE(modernize-use-nullptr)
        auto operator<=>(const CRank&) const = default;
    };

    void TakeWords();
    void Judge(bool mayBeNear);
    [[nodiscard]] bool IsWanted(const CItem& item) const;
    [[nodiscard]] std::span<const quint32> WordsOf(const CItem& item) const;
    [[nodiscard]] Mask MaskOf(const CItem& item) const;
    [[nodiscard]] quint64 WeightOf(const CItem& item) const;
    [[nodiscard]] bool NamesCategory(const CItem& item) const;
    [[nodiscard]] bool IsPartOfQuery(const CItem& item, int part, bool mayBegin) const;
    [[nodiscard]] CFields FieldsOf(const CItem& item) const;
    [[nodiscard]] CRank RankOf(const CItem& item) const;
    template <typename IsMatch>
    CSearchMatches Best(EFound found, IsMatch isMatch) const;
    [[nodiscard]] CSearchMatches FindAll(EFound found) const;
    [[nodiscard]] CSearchMatches FindMost() const;

    const CSearchIndex& m_index;
    const CIndexQuery& m_query;
    CFoldedWords m_folded;
    std::vector<QString> m_stems;
    std::vector<CStemmedWord> m_words;
    Mask m_all = 0;
    std::vector<CJudgement> m_judgements;  ///< of each word of the dictionary
    std::vector<Mask> m_masks;             ///< all matches of each together
    std::vector<Mask> m_categoryMasks;
};

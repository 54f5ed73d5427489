// The index of the search: the words of all items of the catalogue, in memory.
#pragma once

#include <limits>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "store/engine/StorageEngine.h"
#include "store/search/SearchDictionary.h"
#include "store/search/UseKey.h"

/// How much an item is preferred to others that match equally well; those without a row have 0.
using ItemWeights = std::unordered_map<ItemUseKey, quint64>;

struct CIndexedCategory {
    ECatalogueKind kind;
    qint32 id;
    QString name;
};
struct CIndexedItem {
    ObjectId record;
    ECatalogueKind kind;
    qint32 categoryId;
    QStringView name;
    QStringView type;
};

constexpr unsigned KindBit(ECatalogueKind kind) {
    return 1U << static_cast<unsigned>(kind);
}
inline constexpr unsigned kAllKinds = 0xF;
inline constexpr qint32 kAnyCategory = -1;

struct CIndexQuery {
    QStringView text = {};
    unsigned kinds = kAllKinds;  ///< see KindBit
    qint32 categoryId = kAnyCategory;
    int limit = std::numeric_limits<int>::max();
    const ItemWeights* weights = nullptr;
};

/// How the matches of a query match.
enum class EFound : quint8 {
    Nothing,
    All,   ///< they have all words of the query
    Near,  ///< they have all words, some of them but for one letter
    Most,  ///< they lack words of the query
};

struct CSearchMatch {
    ECatalogueKind kind;
    ObjectId record;
    bool operator==(const CSearchMatch&) const = default;
};
struct CSearchMatches {
    EFound found = EFound::Nothing;
    int total = 0;                   ///< also counts those beyond the limit
    std::vector<CSearchMatch> best;  ///< the best first
};

/// What a query finds, and in which order:
/// 1. The words of a query are in any order; each is the beginning of a word of the item's name,
///    type or category. When no item has all of them, words of four and more letters may differ in
///    one letter, except those that the catalogue has as whole words. When still none has all,
///    those that have most of them are found; among these, if any has it, those that have the last,
///    which is the noun. "and", "of" and "the" are ignored beside other words.
/// 2. First come items whose name is the query, then those whose name is a part of it ("milk" for
///    "whole milk"), then the others. Within these: whole words before beginnings; words in the
///    name before those that are the first part of the type, before those in it, before the rest of
///    the type, before the category; the heavier; the plainer (see MadenessOf); types that have the
///    word in the number in which it was typed; the shorter; stored order.
/// 3. A name that repeats the category counts as category where the first part of the type, which
///    then counts as the name, is a part of the query ("Beverages", "Beverages", "coffee, brewed").
class CSearchIndex {
  public:
    /// Replaces the names of all categories. The category of an item may be missing: its name is
    /// then empty.
    void SetCategories(const std::vector<CIndexedCategory>& categories);
    /// The record must not be in the index.
    void Add(const CIndexedItem& item);
    /// Records that are not in the index are ignored.
    void Remove(const std::unordered_set<ObjectId>& records);
    /// Frees the memory reserved for more items.
    void Trim();

    [[nodiscard]] int Count() const { return m_count; }
    /// A text without words finds nothing.
    [[nodiscard]] CSearchMatches Find(const CIndexQuery& query) const;
    /// The items with a weight, the heaviest first. The query's text is ignored.
    [[nodiscard]] CSearchMatches FindWeighted(const CIndexQuery& query) const;
    /// Bytes in memory.
    [[nodiscard]] std::size_t Size() const;

  private:
    friend class CSearchRun;
    struct CCategory {
        ECatalogueKind kind;
        qint32 id;
        ItemUseKey key = 0;
        std::vector<quint32> words;
    };
    struct CItem {
        ObjectId record;  ///< 0: removed
        ItemUseKey key;   ///< of name and type
        quint32 first;    ///< of its words in m_words: those of the name, then those of the type
        quint32 category;
        quint16 length;  ///< characters of name and type
        quint8 nameWords;
        quint8 typeWords;
        quint8 madeness;

        [[nodiscard]] int WordCount() const { return nameWords + typeWords; }
    };

    quint32 PlaceOf(ECatalogueKind kind, qint32 categoryId);
    quint8 AddWords(int firstPart);
    void Compact();

    CSearchDictionary m_dictionary;
    std::vector<CCategory> m_categories;
    std::vector<CItem> m_items;
    std::vector<quint32> m_words;  ///< see IndexedWord
    int m_count = 0;
    CFoldedWords m_folded;  ///< scratch
};

// A word of an item: its number in the dictionary, and above it the part of the item that it is in,
// 0 for the name, 1 and more for the parts of the type.
inline constexpr int kWordBits = 28;
inline constexpr int kLastPart = (1 << (32 - kWordBits)) - 1;
constexpr quint32 IndexedWord(quint32 number, int part) {
    return number | static_cast<quint32>(part < kLastPart ? part : kLastPart) << kWordBits;
}
constexpr quint32 WordOf(quint32 indexed) {
    return indexed & ((1U << kWordBits) - 1);
}
constexpr int PartOf(quint32 indexed) {
    return static_cast<int>(indexed >> kWordBits);
}

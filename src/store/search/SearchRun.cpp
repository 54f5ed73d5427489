#include "store/search/SearchRun.h"

#include <algorithm>
#include <bit>
#include <span>

using namespace Qt::StringLiterals;

namespace {
/// Words that connect others and say nothing about an item.
bool IsConnecting(QStringView word) {
    return word == "and"_L1 || word == "of"_L1 || word == "the"_L1;
}
}  // namespace

CSearchRun::CSearchRun(const CSearchIndex& index, const CIndexQuery& query)
    : m_index(index), m_query(query), m_folded(query.text) {
    TakeWords();
}

void CSearchRun::TakeWords() {
    std::vector<QStringView> words;
    words.reserve(m_folded.Count());
    for (int i = 0; i < m_folded.Count(); ++i) {
        words.push_back(m_folded.WordAt(i));
    }
    if (!std::ranges::all_of(words, IsConnecting)) {
        std::erase_if(words, IsConnecting);
    }
    for (const QStringView word : words) {
        const QString stem = StemOf(word);
        if (m_stems.size() < kMostWords && std::ranges::find(m_stems, stem) == m_stems.end()) {
            m_stems.push_back(stem);
            m_words.push_back({word, {}});
        }
    }
    for (std::size_t i = 0; i < m_words.size(); ++i) {
        m_words[i].stem = m_stems[i];
        m_all |= static_cast<Mask>(1U << i);
    }
}

CSearchMatches CSearchRun::Find() {
    if (m_words.empty()) {
        return {};
    }
    Judge(false);
    CSearchMatches matches = FindAll(EFound::All);
    if (matches.total == 0) {
        Judge(true);
        matches = FindAll(EFound::Near);
    }
    return matches.total == 0 ? FindMost() : matches;
}

CSearchMatches CSearchRun::FindWeighted() {
    m_words.clear();
    return Best(EFound::All, [this](const CItem& item) { return WeightOf(item) > 0; });
}

void CSearchRun::Judge(bool mayBeNear) {
    const CSearchDictionary& dictionary = m_index.m_dictionary;
    // A word that the catalogue has as it is was not misspelled.
    Mask known = 0;
    for (const CJudgement& judgement : m_judgements) {
        known |= judgement.Whole();
    }
    m_judgements.assign(dictionary.Count(), {});
    m_masks.assign(dictionary.Count(), 0);
    for (int number = 0; number < dictionary.Count(); ++number) {
        if (!dictionary.IsUsed(number)) {
            continue;
        }
        const CStemmedWord word = dictionary.WordAt(number);
        for (std::size_t i = 0; i < m_words.size(); ++i) {
            const auto bit = static_cast<Mask>(1U << i);
            const EWordMatch match = MatchWord(m_words[i], word, mayBeNear && (known & bit) == 0);
            if (match != EWordMatch::None) {
                m_judgements[number].matches[static_cast<int>(match)] |= bit;
                m_judgements[number].same |= m_words[i].text == word.text ? bit : Mask{0};
                m_masks[number] |= bit;
            }
        }
    }
    m_categoryMasks.clear();
    for (const CSearchIndex::CCategory& category : m_index.m_categories) {
        Mask mask = 0;
        for (const quint32 word : category.words) {
            mask |= m_masks[word];
        }
        m_categoryMasks.push_back(mask);
    }
}

bool CSearchRun::IsWanted(const CItem& item) const {
    const CSearchIndex::CCategory& category = m_index.m_categories[item.category];
    return item.record != 0 && (m_query.kinds & KindBit(category.kind)) != 0 &&
           (m_query.categoryId == kAnyCategory || m_query.categoryId == category.id);
}

std::span<const quint32> CSearchRun::WordsOf(const CItem& item) const {
    return std::span(m_index.m_words).subspan(item.first, item.WordCount());
}

CSearchRun::Mask CSearchRun::MaskOf(const CItem& item) const {
    Mask mask = m_categoryMasks[item.category];
    for (const quint32 word : WordsOf(item)) {
        mask |= m_masks[WordOf(word)];
    }
    return mask;
}

quint64 CSearchRun::WeightOf(const CItem& item) const {
    if (m_query.weights == nullptr || m_query.weights->empty()) {
        return 0;
    }
    const ItemUseKey category = m_index.m_categories[item.category].key;
    const auto found = m_query.weights->find(JoinUseKeys(category, item.key));
    return found == m_query.weights->end() ? 0 : found->second;
}

bool CSearchRun::NamesCategory(const CItem& item) const {
    const std::vector<quint32>& category = m_index.m_categories[item.category].words;
    return std::ranges::equal(WordsOf(item).first(item.nameWords), category, {}, WordOf);
}

/// Whether every word of a part of an item is a whole word of the query, or for `mayBegin` at least
/// begins with one.
bool CSearchRun::IsPartOfQuery(const CItem& item, int part, bool mayBegin) const {
    bool hasWords = false;
    for (const quint32 word : WordsOf(item)) {
        if (PartOf(word) == part) {
            hasWords = true;
            const quint32 number = WordOf(word);
            if ((mayBegin ? m_masks[number] : m_judgements[number].Whole()) == 0) {
                return false;
            }
        }
    }
    return hasWords;
}

CSearchRun::CFields CSearchRun::FieldsOf(const CItem& item) const {
    CFields fields;
    const auto note = [&](quint32 word, EField field) {
        for (int match = 0; match < kWordMatchCount; ++match) {
            fields.found[match][field] |= m_judgements[word].matches[match];
        }
    };
    const int namePart = NamesCategory(item) && IsPartOfQuery(item, 1, true) ? 1 : 0;
    const EField firstPart = IsPartOfQuery(item, namePart + 1, false) ? kIsFirstPart : kInFirstPart;
    Mask nameMask = 0;
    for (const quint32 indexed : WordsOf(item)) {
        const quint32 word = WordOf(indexed);
        const int part = PartOf(indexed);
        if (m_masks[word] == 0) {
            continue;
        }
        const CJudgement& judgement = m_judgements[word];
        fields.same |= part == 0 ? judgement.Whole() : judgement.same;
        nameMask |= part == namePart ? judgement.Whole() : Mask{0};
        note(word, part < namePart        ? kInCategory
                   : part == namePart     ? kInName
                   : part == namePart + 1 ? firstPart
                                          : kInType);
    }
    for (const quint32 word : m_index.m_categories[item.category].words) {
        note(word, kInCategory);
    }
    if (IsPartOfQuery(item, namePart, false)) {
        fields.nameFit = nameMask == m_all ? kNameIsQuery : kNameIsPartOfQuery;
    }
    return fields;
}

CSearchRun::CRank CSearchRun::RankOf(const CItem& item) const {
    const CSearchIndex::CCategory& category = m_index.m_categories[item.category];
    CRank rank;
    rank.lightness = ~WeightOf(item);
    rank.madeness = item.madeness;
    rank.length = item.length;
    rank.kind = category.kind;
    rank.categoryId = category.id;
    rank.record = item.record;
    if (m_words.empty()) {
        return rank;
    }
    const CFields fields = FieldsOf(item);
    rank.nameFit = fields.nameFit;
    rank.otherForms = std::popcount(static_cast<Mask>(m_all & ~fields.same));
    // Each word of the query counts once, where it matches best.
    Mask left = m_all;
    for (int match = 0; match < kWordMatchCount; ++match) {
        const auto kind = static_cast<EWordMatch>(match);
        for (int field = 0; field < kFieldCount; ++field) {
            const Mask here = fields.found[match][field] & left;
            left &= static_cast<Mask>(~here);
            const int count = std::popcount(here);
            rank.fields += count * field;
            rank.beginnings += IsBeginning(kind) ? count : 0;
            rank.nearWords += IsNear(kind) ? count : 0;
        }
    }
    return rank;
}

template <typename IsMatch>
CSearchMatches CSearchRun::Best(EFound found, IsMatch isMatch) const {
    CSearchMatches matches;
    std::vector<CRank> best;  // a heap with the worst of them on top
    for (const CItem& item : m_index.m_items) {
        if (!IsWanted(item) || !isMatch(item)) {
            continue;
        }
        ++matches.total;
        best.push_back(RankOf(item));
        std::ranges::push_heap(best);
        if (std::ssize(best) > m_query.limit) {
            std::ranges::pop_heap(best);
            best.pop_back();
        }
    }
    std::ranges::sort_heap(best);
    for (const CRank& rank : best) {
        matches.best.push_back({rank.kind, rank.record});
    }
    matches.found = matches.total > 0 ? found : EFound::Nothing;
    return matches;
}

CSearchMatches CSearchRun::FindAll(EFound found) const {
    return Best(found, [this](const CItem& item) { return MaskOf(item) == m_all; });
}

CSearchMatches CSearchRun::FindMost() const {
    const auto last = static_cast<Mask>(1U << (m_words.size() - 1));
    const auto score = [last](Mask mask) {
        return 2 * std::popcount(mask) + ((mask & last) != 0 ? 1 : 0);
    };
    int most = 1;  // more than of an item without any of the words
    for (const CItem& item : m_index.m_items) {
        most = IsWanted(item) ? std::max(most, score(MaskOf(item))) : most;
    }
    return Best(EFound::Most, [&](const CItem& item) { return score(MaskOf(item)) == most; });
}

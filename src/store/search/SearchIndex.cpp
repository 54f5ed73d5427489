#include "store/search/SearchIndex.h"

#include <algorithm>

#include "store/search/Plainness.h"
#include "store/search/SearchRun.h"

namespace {
constexpr int kMostWords = 255;  ///< of a name or a type; the others are not found
/// Up to so many removed items are not worth compacting.
constexpr int kFewRemoved = 1000;
}  // namespace

void CSearchIndex::SetCategories(const std::vector<CIndexedCategory>& categories) {
    for (CCategory& category : m_categories) {
        for (const quint32 word : category.words) {
            m_dictionary.Release(word);
        }
        category.words.clear();
        category.key = CategoryUseKey(category.kind, {});
    }
    for (const CIndexedCategory& named : categories) {
        CCategory& category = m_categories[PlaceOf(named.kind, named.id)];
        category.key = CategoryUseKey(named.kind, named.name);
        m_folded.Assign(named.name);
        for (int i = 0; i < m_folded.Count(); ++i) {
            category.words.push_back(m_dictionary.Use(m_folded.WordAt(i)));
        }
    }
}

quint32 CSearchIndex::PlaceOf(ECatalogueKind kind, qint32 categoryId) {
    const auto found = std::ranges::find_if(m_categories, [&](const CCategory& category) {
        return category.kind == kind && category.id == categoryId;
    });
    const auto place = static_cast<quint32>(found - m_categories.begin());
    if (found == m_categories.end()) {
        m_categories.push_back({kind, categoryId, CategoryUseKey(kind, {}), {}});
    }
    return place;
}

void CSearchIndex::Add(const CIndexedItem& item) {
    constexpr qsizetype kLongest = std::numeric_limits<quint16>::max();
    CItem added{};
    added.record = item.record;
    added.key = NameUseKey(item.name, item.type);
    added.first = static_cast<quint32>(m_words.size());
    added.category = PlaceOf(item.kind, item.categoryId);
    added.length = static_cast<quint16>(std::min(item.name.size() + item.type.size(), kLongest));
    m_folded.Assign(item.name);
    added.nameWords = AddWords(0);
    m_folded.Assign(item.type);
    added.typeWords = AddWords(1);
    added.madeness = static_cast<quint8>(MadenessOf(m_folded));
    m_items.push_back(added);
    ++m_count;
}

/// The words of m_folded. The name counts as one part.
quint8 CSearchIndex::AddWords(int firstPart) {
    const int count = std::min(m_folded.Count(), kMostWords);
    for (int i = 0; i < count; ++i) {
        const int part = firstPart == 0 ? 0 : firstPart + m_folded.PartOf(i);
        m_words.push_back(IndexedWord(m_dictionary.Use(m_folded.WordAt(i)), part));
    }
    return static_cast<quint8>(count);
}

void CSearchIndex::Remove(const std::unordered_set<ObjectId>& records) {
    for (CItem& item : m_items) {
        if (item.record == 0 || !records.contains(item.record)) {
            continue;
        }
        item.record = 0;
        --m_count;
        for (int i = 0; i < item.WordCount(); ++i) {
            m_dictionary.Release(WordOf(m_words[item.first + i]));
        }
    }
    const int removed = static_cast<int>(m_items.size()) - m_count;
    if (removed > kFewRemoved && removed > m_count / 4) {
        Compact();
    }
}

void CSearchIndex::Compact() {
    std::erase_if(m_items, [](const CItem& item) { return item.record == 0; });
    std::vector<quint32> words;
    for (CItem& item : m_items) {
        const auto from = m_words.begin() + item.first;
        item.first = static_cast<quint32>(words.size());
        words.insert(words.end(), from, from + item.WordCount());
    }
    m_words = std::move(words);
    Trim();
}

void CSearchIndex::Trim() {
    m_items.shrink_to_fit();
    m_words.shrink_to_fit();
    m_dictionary.Trim();
}

CSearchMatches CSearchIndex::Find(const CIndexQuery& query) const {
    return CSearchRun(*this, query).Find();
}

CSearchMatches CSearchIndex::FindWeighted(const CIndexQuery& query) const {
    return CSearchRun(*this, query).FindWeighted();
}

std::size_t CSearchIndex::Size() const {
    std::size_t size = m_dictionary.Size() + m_items.capacity() * sizeof(CItem) +
                       m_words.capacity() * sizeof(quint32) +
                       m_categories.capacity() * sizeof(CCategory);
    for (const CCategory& category : m_categories) {
        size += category.words.capacity() * sizeof(quint32);
    }
    return size;
}

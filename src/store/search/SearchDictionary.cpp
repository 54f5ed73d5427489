#include "store/search/SearchDictionary.h"

#include <algorithm>

namespace {
constexpr qsizetype kLongestWord = 255;
}  // namespace

quint32 CSearchDictionary::Use(QStringView whole) {
    const QStringView word = whole.first(std::min(whole.size(), kLongestWord));
    if (const auto found = m_numbers.find(word); found != m_numbers.end()) {
        ++m_words[*found].uses;
        return *found;
    }
    const auto number = static_cast<quint32>(m_words.size());
    const QString stem = StemOf(word);
    const bool isStem = stem == word;
    m_words.push_back({static_cast<quint32>(m_text.size()), static_cast<quint16>(word.size()),
                       static_cast<quint16>(isStem ? 0 : stem.size()), 1});
    m_text.append(word.utf16(), static_cast<std::size_t>(word.size()));
    if (!isStem) {
        m_text.append(QStringView(stem).utf16(), static_cast<std::size_t>(stem.size()));
    }
    m_numbers.insert(number);
    return number;
}

CStemmedWord CSearchDictionary::WordAt(quint32 number) const {
    const CWord& word = m_words[number];
    const QStringView text = QStringView(m_text).sliced(word.first, word.length);
    return {text, word.stemLength == 0
                      ? text
                      : QStringView(m_text).sliced(word.first + word.length, word.stemLength)};
}

std::size_t CSearchDictionary::Size() const {
    constexpr std::size_t kNode = 2 * sizeof(void*) + sizeof(std::size_t);
    return m_text.capacity() * sizeof(char16_t) + m_words.capacity() * sizeof(CWord) +
           m_numbers.size() * kNode + m_numbers.bucket_count() * sizeof(void*);
}

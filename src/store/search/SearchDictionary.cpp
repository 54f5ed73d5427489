#include "store/search/SearchDictionary.h"

#include <QHash>
#include <algorithm>
#include <limits>

namespace {
constexpr qsizetype kLongestWord = 255;
constexpr std::size_t kFirstSlots = 1024;
constexpr quint32 kFree = std::numeric_limits<quint32>::max();
}  // namespace

quint32 CSearchDictionary::Use(QStringView whole) {
    const QStringView word = whole.first(std::min(whole.size(), kLongestWord));
    if (m_words.size() >= m_slots.size() / 4 * 3) {
        Grow();
    }
    const std::size_t slot = SlotOf(word);
    if (m_slots[slot] != kFree) {
        ++m_words[m_slots[slot]].uses;
        return m_slots[slot];
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
    m_slots[slot] = number;
    return number;
}

/// Where the word is, or would be added. There is always a free slot.
std::size_t CSearchDictionary::SlotOf(QStringView word) const {
    std::size_t slot = qHash(word) & (m_slots.size() - 1);
    while (m_slots[slot] != kFree && WordAt(m_slots[slot]).text != word) {
        slot = (slot + 1) & (m_slots.size() - 1);
    }
    return slot;
}

void CSearchDictionary::Grow() {
    m_slots.assign(std::max(kFirstSlots, m_slots.size() * 2), kFree);
    for (quint32 number = 0; number < m_words.size(); ++number) {
        m_slots[SlotOf(WordAt(number).text)] = number;
    }
}

CStemmedWord CSearchDictionary::WordAt(quint32 number) const {
    const CWord& word = m_words[number];
    const QStringView text = QStringView(m_text).sliced(word.first, word.length);
    return {text, word.stemLength == 0
                      ? text
                      : QStringView(m_text).sliced(word.first + word.length, word.stemLength)};
}

void CSearchDictionary::Trim() {
    m_text.shrink_to_fit();
    m_words.shrink_to_fit();
}

std::size_t CSearchDictionary::Size() const {
    return m_text.capacity() * sizeof(char16_t) + m_words.capacity() * sizeof(CWord) +
           m_slots.capacity() * sizeof(quint32);
}

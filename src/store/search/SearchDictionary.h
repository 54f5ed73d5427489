// The distinct words of the items in a search index, numbered from 0 on.
#pragma once

#include <QStringView>
#include <string>
#include <vector>

#include "store/search/SearchWords.h"

/// A word keeps its number for the life of the dictionary. The words that no item uses any more
/// stay, and match nothing.
class CSearchDictionary {
  public:
    [[nodiscard]] int Count() const { return static_cast<int>(m_words.size()); }
    /// The number of a folded word, which is added when it is new, with one use more. Very long
    /// words are cut.
    quint32 Use(QStringView word);
    void Release(quint32 number) { --m_words[number].uses; }
    [[nodiscard]] bool IsUsed(quint32 number) const { return m_words[number].uses > 0; }
    /// Valid until the next Use.
    [[nodiscard]] CStemmedWord WordAt(quint32 number) const;
    /// Frees the memory reserved for more words.
    void Trim();
    /// Bytes in memory.
    [[nodiscard]] std::size_t Size() const;

  private:
    struct CWord {
        quint32 first;  ///< in m_text; the stem follows unless it is the word itself
        quint16 length;
        quint16 stemLength;  ///< 0: the word is its own stem
        quint32 uses;
    };
    [[nodiscard]] std::size_t SlotOf(QStringView word) const;
    void Grow();

    std::u16string m_text;
    std::vector<CWord> m_words;
    /// Numbers by the hash of their words, each in the first free slot from there on. A power of
    /// two, at most three quarters of it used.
    std::vector<quint32> m_slots;
};

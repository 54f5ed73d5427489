// The distinct words of the items in a search index, numbered from 0 on.
#pragma once

#include <QHash>
#include <QStringView>
#include <string>
#include <unordered_set>
#include <vector>

#include "store/search/SearchWords.h"

/// A word keeps its number for the life of the dictionary. The words that no item uses any more
/// stay, and match nothing.
class CSearchDictionary {
  public:
    CSearchDictionary() : m_numbers(0, CHash{this}, CEqual{this}) {}
    // The set's functions point to the dictionary.
    CSearchDictionary(const CSearchDictionary&) = delete;
    CSearchDictionary& operator=(const CSearchDictionary&) = delete;

    [[nodiscard]] int Count() const { return static_cast<int>(m_words.size()); }
    /// The number of a folded word, which is added when it is new, with one use more. Very long
    /// words are cut.
    quint32 Use(QStringView word);
    void Release(quint32 number) { --m_words[number].uses; }
    [[nodiscard]] bool IsUsed(quint32 number) const { return m_words[number].uses > 0; }
    /// Valid until the next Use.
    [[nodiscard]] CStemmedWord WordAt(quint32 number) const;
    /// Bytes in memory.
    [[nodiscard]] std::size_t Size() const;

  private:
    struct CWord {
        quint32 first;  ///< in m_text; the stem follows unless it is the word itself
        quint16 length;
        quint16 stemLength;  ///< 0: the word is its own stem
        quint32 uses;
    };
    // A number stands for its word, so that a word is looked up without being stored twice.
    struct CHash {
        using is_transparent = void;
        const CSearchDictionary* owner;
        std::size_t operator()(QStringView word) const { return qHash(word); }
        std::size_t operator()(quint32 number) const { return qHash(owner->WordAt(number).text); }
    };
    struct CEqual {
        using is_transparent = void;
        const CSearchDictionary* owner;
        bool operator()(quint32 left, quint32 right) const { return left == right; }
        bool operator()(QStringView left, quint32 right) const {
            return left == owner->WordAt(right).text;
        }
        bool operator()(quint32 left, QStringView right) const { return (*this)(right, left); }
    };

    std::u16string m_text;
    std::vector<CWord> m_words;
    std::unordered_set<quint32, CHash, CEqual> m_numbers;
};

// Many texts, most of which repeat, each kept once.
#pragma once

#include <QString>
#include <string>
#include <unordered_map>
#include <vector>

class CTextPool {
  public:
    static constexpr quint32 kNone = ~quint32{0};  ///< the number of an empty text

    void Clear();
    /// The number of the text. What no field of the catalogue can hold is cut off.
    quint32 Add(std::string_view text);
    /// See TableText.
    [[nodiscard]] QString TextOf(quint32 number) const;

  private:
    struct CHash {
        using is_transparent = void;
        size_t operator()(std::string_view text) const {
            return std::hash<std::string_view>()(text);
        }
    };

    std::unordered_map<std::string, quint32, CHash, std::equal_to<>> m_numbers;
    std::vector<const std::string*> m_texts;
};

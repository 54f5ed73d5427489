#include "catalogue/tables/TextPool.h"

#include "catalogue/items/TextLimits.h"
#include "catalogue/tables/TableTexts.h"

void CTextPool::Clear() {
    m_texts.clear();
    m_numbers.clear();
}

quint32 CTextPool::Add(std::string_view text) {
    // A UTF-16 unit takes up to 3 bytes, so that what is left is cut again, to the same characters.
    constexpr size_t kMostBytes = size_t{4} * kLongestText;
    if (text.empty()) {
        return kNone;
    }
    text = text.substr(0, kMostBytes);
    const auto known = m_numbers.find(text);
    if (known != m_numbers.end()) {
        return known->second;
    }
    const auto number = static_cast<quint32>(m_texts.size());
    m_texts.push_back(&m_numbers.emplace(text, number).first->first);
    return number;
}

QString CTextPool::TextOf(quint32 number) const {
    return number == kNone ? QString() : TableText(*m_texts[number]);
}

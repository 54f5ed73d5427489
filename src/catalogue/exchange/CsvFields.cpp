#include "catalogue/exchange/CsvFields.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include "platform/CutText.h"
#include "platform/NumberText.h"
#include "platform/TextFile.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int kLongestNumber = 19;
constexpr int kDecimals = 3;
/// How many texts a message lists.
constexpr int kTextsNamed = 3;

/// Reads digits and returns the place after them.
const QChar* ReadDigits(const QChar* at, const QChar* end, quint64& number) {
    for (; at != end; ++at) {
        const unsigned digit = at->unicode() - u'0';
        if (digit > 9) {
            break;
        }
        number = number * 10 + digit;
    }
    return at;
}

/// Reads a number of digits and at most one point, if a double holds all its digits exactly, so
/// that one division gives the nearest double. Returns its end; null for any other form.
const QChar* ReadPlainNumber(const QChar* begin, const QChar* end, double& value) {
    constexpr std::ptrdiff_t kMostDigits = 15;
    static constexpr std::array<double, kMostDigits + 1> kPowers = {
        1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    quint64 number = 0;
    const QChar* at = ReadDigits(begin, end, number);
    std::ptrdiff_t digits = at - begin;
    std::ptrdiff_t decimals = 0;
    if (at != end && *at == u'.') {
        const QChar* const first = at + 1;
        at = ReadDigits(first, end, number);
        decimals = at - first;
        digits += decimals;
    }
    if (digits == 0 || digits > kMostDigits) {
        return nullptr;
    }
    // Converting a signed number to double is faster.
    value = static_cast<double>(static_cast<qint64>(number)) / kPowers[decimals];
    return at;
}

bool IsBlank(QChar c) {
    return c == u' ' || (c >= u'\t' && c <= u'\r') || (c > u'\x7F' && c.isSpace());
}

/// The first quote followed by a comma; null when there is none.
const QChar* FindClosing(const QChar* at, const QChar* end) {
    for (; end - at > 1; ++at) {
        if (*at == u'"' && at[1] == u',') {
            return at;
        }
    }
    return nullptr;
}

QStringView Field(const QChar* begin, const QChar* end) {
    while (begin != end && IsBlank(*begin)) {
        ++begin;
    }
    while (begin != end && IsBlank(end[-1])) {
        --end;
    }
    if (end - begin >= 2) {
        begin += *begin == u'"' ? 1 : 0;
        end -= end[-1] == u'"' ? 1 : 0;
    }
    return {begin, end};
}

bool IsChangedByQuotes(QStringView text) {
    const QString field = u'"' + text.toString() + u"\","_s;
    return CCsvFields(field).Next() != text;
}
}  // namespace

CCsvFields::CCsvFields(QStringView line) : m_at(line.begin()), m_end(line.end()) {
    while (m_end != m_at && IsBlank(m_end[-1])) {
        --m_end;
    }
}

std::optional<QStringView> CCsvFields::Next() {
    while (m_at != m_end && IsBlank(*m_at)) {
        ++m_at;
    }
    const QChar* closing = nullptr;
    if (m_at != m_end && *m_at == u'"') {
        ++m_at;
        closing = FindClosing(m_at, m_end);
    }
    if (m_at == m_end) {
        return std::nullopt;
    }
    const QChar* const begin = m_at;
    if (closing != nullptr) {
        m_at = closing + 2;
        return Field(begin, closing);
    }
    const QChar* const comma = std::find(begin, m_end, u',');
    m_at = comma == m_end ? comma : comma + 1;
    return Field(begin, comma);
}

std::optional<double> CCsvFields::NextNumber() {
    // Nearly half of all fields of a food table.
    constexpr QStringView kZero = u"0.000,";
    if (m_end - m_at >= kZero.size() &&
        std::memcmp(m_at, kZero.data(), kZero.size() * sizeof(QChar)) == 0) {
        m_at += kZero.size();
        return 0;
    }
    double number = 0;
    const QChar* const end = ReadPlainNumber(m_at, m_end, number);
    if (end != nullptr && (end == m_end || *end == u',')) {
        m_at = end == m_end ? end : end + 1;
        return number;
    }
    const std::optional<QStringView> field = Next();
    return field ? std::optional(ImportedNumber(*field)) : std::nullopt;
}

void CDistinctTexts::Add(const QString& text) {
    if (!m_texts.contains(text) && m_first.size() < kTextsNamed) {
        m_first.append(u'\'' + text + u'\'');
    }
    m_texts.insert(text);
}

QString CDistinctTexts::First() const {
    return m_first.join(", "_L1) + (m_texts.size() > m_first.size() ? ", ..."_L1 : ""_L1);
}

char* CCsvLineWriter::Room(qsizetype bytes) {
    const size_t needed = m_size + static_cast<size_t>(bytes);
    if (needed > m_line.size()) {
        m_line.resize(2 * needed);
    }
    return m_line.data() + m_size;
}

void CCsvLineWriter::Raw(QByteArrayView bytes) {
    std::memcpy(Room(bytes.size()), bytes.data(), static_cast<size_t>(bytes.size()));
    m_size += static_cast<size_t>(bytes.size());
}

void CCsvLineWriter::Text(QStringView text) {
    if (text.isEmpty()) {
        Raw("\"\",");
        return;
    }
    if (text.contains(u'"') && IsChangedByQuotes(text)) {
        m_changedTexts.Add(text.toString());
    }
    EscapedText(text);
}

void CCsvLineWriter::EscapedText(QStringView text) {
    Raw("\"");
    char* const begin = Room(text.size());
    m_file.EncodeTo(begin, text);
    std::replace_if(
        begin, begin + text.size(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
    m_size += static_cast<size_t>(text.size());
    Raw("\",");
}

void CCsvLineWriter::Number(double value) {
    if (value == 0 && !std::signbit(value)) {
        Raw("0.000,");
        return;
    }
    char* const begin = Room(kMaxFixedLength + 1);
    char* const end = WriteFixed(begin, std::isfinite(value) ? value : 0, kDecimals);
    *end = ',';
    m_size += static_cast<size_t>(end + 1 - begin);
}

void CCsvLineWriter::EndLine(const QString& item) {
    if (m_size > CTextFile::kMaxLineBytes) {
        m_longLines.Add(item);
    }
    Raw("\r\n");
    m_file.WriteBytes({m_line.data(), static_cast<qsizetype>(m_size)});
    m_size = 0;
}

QString CutImportedText(QStringView text, int longest) {
    const auto dots = u"..."_s;
    return text.size() <= longest ? text.toString()
                                  : CutText(text, longest - dots.size()).toString() + dots;
}

double ImportedNumber(QStringView field) {
    if (field.isEmpty() || field.size() > kLongestNumber) {
        return 0;
    }
    double number = 0;
    return ReadPlainNumber(field.begin(), field.end(), number) == field.end()
               ? number
               : LeadingNumber(field);
}

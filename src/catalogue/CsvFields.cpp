#include "catalogue/CsvFields.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "platform/NumberText.h"
#include "platform/TextFile.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int kCutText = 124;
constexpr int kLongestNumber = 19;
constexpr int kDecimals = 3;
/// Of the texts in a message.
constexpr int kTextsNamed = 3;

/// Plain decimal numbers of up to 15 digits, which a double holds exactly, so that one division
/// gives the nearest double. Nothing for any other form.
std::optional<double> ShortDecimal(QStringView field) {
    static constexpr std::array<double, 16> kPowers = {
        1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    if (field.size() > 16) {
        return std::nullopt;
    }
    qint64 digits = 0;
    int count = 0;
    qsizetype point = -1;
    for (qsizetype i = 0; i < field.size(); ++i) {
        const char16_t c = field[i].unicode();
        if (c >= u'0' && c <= u'9') {
            digits = digits * 10 + (c - u'0');
            ++count;
        } else if (c == u'.' && point < 0) {
            point = i;
        } else {
            return std::nullopt;
        }
    }
    if (count == 0 || count > 15) {
        return std::nullopt;
    }
    const qsizetype decimals = point < 0 ? 0 : field.size() - point - 1;
    return static_cast<double>(digits) / kPowers[static_cast<size_t>(decimals)];
}

bool IsBlank(QChar c) {
    return c == u' ' || (c >= u'\t' && c <= u'\r') || (c > u'\x7F' && c.isSpace());
}

/// Position of the first quote that a comma follows; -1 when there is none.
qsizetype FindClosing(QStringView rest) {
    for (qsizetype i = 1; i < rest.size(); ++i) {
        if (rest[i] == u',' && rest[i - 1] == u'"') {
            return i - 1;
        }
    }
    return -1;
}

/// Position of the first comma; the size when there is none.
qsizetype FindComma(QStringView rest) {
    qsizetype i = 0;
    while (i < rest.size() && rest[i] != u',') {
        ++i;
    }
    return i;
}

QStringView Trimmed(QStringView field) {
    qsizetype begin = 0;
    qsizetype end = field.size();
    while (begin < end && IsBlank(field[begin])) {
        ++begin;
    }
    while (end > begin && IsBlank(field[end - 1])) {
        --end;
    }
    return field.sliced(begin, end - begin);
}

QStringView WithoutQuotes(QStringView field) {
    if (field.size() < 2) {
        return field;
    }
    const qsizetype begin = field.front() == u'"' ? 1 : 0;
    const qsizetype end = field.size() - (field.back() == u'"' ? 1 : 0);
    return field.sliced(begin, end - begin);
}

bool IsChangedByQuotes(QStringView text) {
    const QString field = u'"' + text.toString() + u"\","_s;
    return CCsvFields(field).Next() != text;
}
}  // namespace

std::optional<QStringView> CCsvFields::Next() {
    qsizetype begin = 0;
    while (begin < m_rest.size() && IsBlank(m_rest[begin])) {
        ++begin;
    }
    m_rest = m_rest.sliced(begin);
    qsizetype closing = -1;
    if (!m_rest.isEmpty() && m_rest.front() == u'"') {
        m_rest = m_rest.sliced(1);
        closing = FindClosing(m_rest);
    }
    if (m_rest.isEmpty()) {
        return std::nullopt;
    }
    const qsizetype size = closing >= 0 ? closing : FindComma(m_rest);
    const QStringView field = m_rest.first(size);
    // Past the comma, and before it past the quote.
    m_rest = m_rest.sliced(std::min(size + (closing >= 0 ? 2 : 1), m_rest.size()));
    return WithoutQuotes(Trimmed(field));
}

void CNotedTexts::Add(const QString& text) {
    if (!m_texts.contains(text) && m_first.size() < kTextsNamed) {
        m_first.append(u'\'' + text + u'\'');
    }
    m_texts.insert(text);
}

QString CNotedTexts::First() const {
    return m_first.join(", "_L1) + (m_texts.size() > m_first.size() ? ", ..."_L1 : ""_L1);
}

void CCsvLineWriter::Text(QStringView text) {
    if (text.contains(u'"') && IsChangedByQuotes(text)) {
        m_changedTexts.Add(text.toString());
    }
    EscapedText(text);
}

void CCsvLineWriter::EscapedText(QStringView text) {
    m_line.append('"');
    const qsizetype begin = m_line.size();
    m_file.AppendText(m_line, text);
    std::replace_if(
        m_line.begin() + begin, m_line.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
    m_line.append("\",");
}

void CCsvLineWriter::Number(double value) {
    AppendNumber(m_line, value);
}

void CCsvLineWriter::EndLine(const QString& item) {
    if (m_line.size() > CTextFile::kMaxLineBytes) {
        m_longLines.Add(item);
    }
    m_file.WriteBytes(m_line.append("\r\n"));
    m_line.resize(0);  // keeps its memory for the next line
}

QString CutImportedText(QStringView text) {
    return text.size() <= kLongestText ? text.toString()
                                       : text.first(kCutText).toString() + u"..."_s;
}

double ImportedNumber(QStringView field) {
    if (field.isEmpty() || field.size() > kLongestNumber) {
        return 0;
    }
    const std::optional<double> number = ShortDecimal(field);
    return number ? *number : LeadingNumber(field);
}

void AppendNumber(QByteArray& line, double value) {
    AppendFixed(line, std::isfinite(value) ? value : 0, kDecimals);
    line.append(',');
}

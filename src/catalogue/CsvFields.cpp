#include "catalogue/CsvFields.h"

#include <array>
#include <cmath>

#include "platform/NumberText.h"
#include "platform/TextFile.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int kCutText = 124;
constexpr int kLongestNumber = 19;
constexpr int kDecimals = 3;

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

}  // namespace

std::optional<QStringView> CCsvFields::Next() {
    m_rest = m_rest.trimmed();
    if (m_rest.isEmpty()) {
        return std::nullopt;
    }
    qsizetype closing = -1;
    if (m_rest.front() == u'"') {
        m_rest = m_rest.sliced(1);
        closing = m_rest.indexOf(u"\",");
    }
    QStringView field;
    if (closing >= 0) {
        field = m_rest.first(closing);
        m_rest = m_rest.sliced(closing + 2);
    } else if (m_rest.isEmpty()) {
        return std::nullopt;
    } else {
        const qsizetype comma = m_rest.indexOf(u',');
        field = comma < 0 ? m_rest : m_rest.first(comma);
        m_rest = comma < 0 ? QStringView() : m_rest.sliced(comma + 1);
    }
    if (closing < 0 || m_blanks == EQuotedBlanks::Trimmed) {
        field = field.trimmed();
    }
    if (field.size() >= 2) {
        if (field.front() == u'"') {
            field = field.sliced(1);
        }
        if (field.back() == u'"') {
            field = field.chopped(1);
        }
    }
    return field;
}

/// Texts go through the file's code page, so the bytes collected so far leave first.
void CCsvLineWriter::Text(QStringView text) {
    if (text.isEmpty()) {
        m_line.append("\"\",");
        return;
    }
    m_file.WriteBytes(m_line.append('"'));
    if (text.contains(u'\n') || text.contains(u'\r')) {
        m_file.WriteText(text.toString().replace(u'\n', u' ').replace(u'\r', u' '));
    } else {
        m_file.WriteText(text);
    }
    m_line = "\",";
}

void CCsvLineWriter::Number(double value) {
    AppendNumber(m_line, value);
}

void CCsvLineWriter::EndLine() {
    m_file.WriteBytes(m_line.append("\r\n"));
    m_line.clear();
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

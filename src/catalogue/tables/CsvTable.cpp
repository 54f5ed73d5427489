#include "catalogue/tables/CsvTable.h"

#include <QFileInfo>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <utility>

using namespace Qt::StringLiterals;

namespace {
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr qsizetype kShownLength = 40;

/// The number of the line at a place of a file. It is only counted for a message, so that reading
/// need not count.
qint64 LineAt(const QString& path, qint64 place) {
    QFile file(path);
    qint64 line = 1;
    if (file.open(QIODevice::ReadOnly)) {
        QByteArray block;
        for (; place > 0; place -= block.size()) {
            block = file.read(std::min<qint64>(place, CCsvTable::kMostRowBytes));
            if (block.isEmpty()) {
                break;
            }
            line += block.count('\n');
        }
    }
    return line;
}

template <typename Number>
bool Convert(std::string_view text, Number& number) {
    const char* const end = text.data() + text.size();
    const auto [at, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && at == end;
}

/// The quote that ends a field; null when it has not been read. One quote is at `end`.
const char* FindClosing(const char* at, const char* end, bool& isDoubled) {
    for (;; at += 2) {
        while (*at != '"') {
            ++at;
        }
        if (end - at < 2) {
            return nullptr;
        }
        if (at[1] != '"') {
            return at;
        }
        isDoubled = true;
    }
}

/// The character that a field without quotes cannot contain.
const char* FindSeparator(const char* at) {
    while (*at != ',' && *at != '\n' && *at != '\r' && *at != '"') {
        ++at;
    }
    return at;
}
}  // namespace

CCsvTable::CCsvTable(const QString& path, const CTableLayout& layout, OnBlock onBlock)
    : m_layout(layout),
      m_onBlock(std::move(onBlock)),
      m_file(path),
      m_buffer(kMostRowBytes + 2) {  // a line end and the quote
    m_row = m_at = m_end = m_buffer.data();
    if (!QFileInfo(path).isFile() || !m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        SetError(u": the file cannot be opened"_s);
    } else if (!ReadHeader() && m_error.isEmpty() && !m_isCancelled) {
        SetError(u": the file is empty"_s);
    }
    m_fields.resize(m_layout.columns.size());
}

bool CCsvTable::ReadHeader() {
    if (!Refill()) {
        return false;
    }
    if (std::string_view(m_at, m_end).starts_with(kUtf8Mark)) {
        m_at += kUtf8Mark.size();
    }
    if (!NextRow()) {
        return false;
    }
    const std::vector<std::string_view> titles = std::exchange(m_fields, {});
    m_wanted.assign(titles.size(), -1);
    for (size_t column = 0; column < m_layout.columns.size(); ++column) {
        const CTableColumn& wanted = m_layout.columns[column];
        const auto found = std::ranges::find(titles, std::string_view(wanted.name));
        if (found != titles.end()) {
            m_wanted[found - titles.begin()] = static_cast<int>(column);
        } else if (wanted.isRequired) {
            return SetError(u": there is no column '%1'"_s.arg(QLatin1StringView(wanted.name)));
        }
    }
    return true;
}

bool CCsvTable::NextRow() {
    while (m_error.isEmpty() && !m_isCancelled) {
        switch (ParseRow()) {
            case EParsed::Row:
                return true;
            case EParsed::Blank:
                break;
            case EParsed::Incomplete:
                if (!Refill()) {
                    return false;
                }
                break;
            case EParsed::Damaged:
                return false;
        }
    }
    return false;
}

CCsvTable::EParsed CCsvTable::ParseRow() {
    m_row = m_at;
    m_fieldCount = 0;
    m_doubled.clear();
    if (m_wanted.empty()) {
        m_fields.clear();
    }
    for (const char* at = m_at;; ++at) {
        if (at == m_end) {
            return EParsed::Incomplete;
        }
        const bool isQuoted = *at == '"';
        bool isDoubled = false;
        const char* const begin = isQuoted ? at + 1 : at;
        at = isQuoted ? FindClosing(begin, m_end, isDoubled) : FindSeparator(begin);
        if (at == nullptr || at == m_end) {
            return EParsed::Incomplete;
        }
        TakeField({begin, at}, isDoubled);
        at += isQuoted ? 1 : 0;
        if (*at != ',') {
            return EndRow(at);
        }
    }
}

void CCsvTable::TakeField(std::string_view field, bool isDoubled) {
    int place = static_cast<int>(m_fieldCount);
    if (m_wanted.empty()) {
        m_fields.push_back(field);
    } else {
        place = m_fieldCount < m_wanted.size() ? m_wanted[m_fieldCount] : -1;
        if (place >= 0) {
            m_fields[place] = field;
        }
    }
    ++m_fieldCount;
    if (isDoubled && place >= 0) {
        m_doubled.push_back(place);
    }
}

CCsvTable::EParsed CCsvTable::EndRow(const char* at) {
    if (*at == '\r') {
        ++at;
        if (at == m_end) {
            return EParsed::Incomplete;
        }
    }
    if (*at != '\n') {
        Refuse(u"unexpected quote or line end"_s);
        return EParsed::Damaged;
    }
    if (*m_row == '\n' || *m_row == '\r') {
        m_at = at + 1;
        return EParsed::Blank;
    }
    if (!m_wanted.empty() && m_fieldCount != m_wanted.size()) {
        Refuse(u"%1 fields instead of %2"_s.arg(m_fieldCount).arg(m_wanted.size()));
        return EParsed::Damaged;
    }
    m_at = at + 1;
    ResolveQuotes();
    return EParsed::Row;
}

/// In place, once the row is complete: an incomplete one is parsed again.
void CCsvTable::ResolveQuotes() {
    for (const int place : m_doubled) {
        std::string_view& field = m_fields[place];
        char* const begin = m_buffer.data() + (field.data() - m_buffer.data());
        char* to = begin;
        for (size_t i = 0; i < field.size(); ++i) {
            *to++ = field[i];
            i += field[i] == '"' ? 1 : 0;
        }
        field = {begin, to};
    }
}

bool CCsvTable::Refill() {
    if (m_isAtEnd) {
        return m_at == m_end ? false : Refuse(u"the file ends within a quoted field"_s);
    }
    char* const buffer = m_buffer.data();
    const qsizetype kept = m_end - m_at;
    if (kept == kMostRowBytes) {
        return Refuse(u"a row longer than 1 MB, or a missing quote"_s);
    }
    m_bufferStart += m_at - buffer;
    std::memmove(buffer, m_at, static_cast<size_t>(kept));
    m_row = m_at = buffer;
    const qint64 read = m_file.read(buffer + kept, kMostRowBytes - kept);
    if (read < 0) {
        return SetError(u": the file cannot be read"_s);
    }
    char* end = buffer + kept + read;
    m_isAtEnd = read == 0;
    if (m_isAtEnd && kept > 0 && end[-1] != '\n') {
        *end++ = '\n';
    }
    *end = '"';
    m_end = end;
    m_isCancelled = m_onBlock && !m_onBlock(read);
    return !m_isCancelled && (read > 0 || kept > 0);
}

bool CCsvTable::ReadNumber(int column, quint32& number) {
    return Convert(Field(column), number) || RefuseField(column);
}

bool CCsvTable::ReadAmount(int column, double& amount) {
    return (Convert(Field(column), amount) && std::isfinite(amount)) || RefuseField(column);
}

bool CCsvTable::RefuseField(int column) {
    const std::string_view field = Field(column);
    QString text = QString::fromUtf8(field.data(), static_cast<qsizetype>(field.size()));
    if (text.size() > kShownLength) {
        text = text.first(kShownLength) + u"..."_s;
    }
    return Refuse(u"'%1' is not a valid number for '%2'"_s.arg(
        text, QLatin1StringView(m_layout.columns[column].name)));
}

bool CCsvTable::Refuse(const QString& reason) {
    const qint64 place = m_bufferStart + (m_row - m_buffer.data());
    return SetError(u", line %1: "_s.arg(LineAt(m_file.fileName(), place)) + reason);
}

bool CCsvTable::SetError(const QString& reason) {
    m_error = QLatin1StringView(m_layout.file) + reason;
    return false;
}

#include "store/engine/Statement.h"

#include <sqlite3.h>

#include <algorithm>

CStatement::~CStatement() {
    Release();
}

EPlatformError CStatement::Prepare(CSqliteFile& file, const char* sql) {
    m_file = &file;
    return file.Prepare(sql, m_statement);
}

void CStatement::Release() {
    sqlite3_finalize(m_statement);
    m_statement = nullptr;
}

void CStatement::Start(std::initializer_list<CSqlValue> values) {
    int place = 0;
    m_result = SQLITE_OK;
    for (const CSqlValue& value : values) {
        ++place;
        int result = SQLITE_OK;
        if (const auto* number = std::get_if<qint64>(&value)) {
            result = sqlite3_bind_int64(m_statement, place, *number);
        } else if (const auto* blob = std::get_if<QByteArrayView>(&value)) {
            result =
                sqlite3_bind_blob64(m_statement, place, blob->data(), blob->size(), SQLITE_STATIC);
        } else {
            const auto text = std::get<QStringView>(value);
            result =
                sqlite3_bind_text64(m_statement, place, reinterpret_cast<const char*>(text.utf16()),
                                    text.size() * sizeof(char16_t), SQLITE_STATIC, SQLITE_UTF16);
        }
        m_result = std::max(m_result, result);
    }
}

bool CStatement::Next() {
    if (m_result == SQLITE_OK || m_result == SQLITE_ROW) {
        m_result = sqlite3_step(m_statement);
    }
    return m_result == SQLITE_ROW;
}

EPlatformError CStatement::Finish() {
    const EPlatformError error = m_file->ErrorOf(m_result);
    sqlite3_reset(m_statement);
    return error;
}

EPlatformError CStatement::Run(std::initializer_list<CSqlValue> values) {
    Start(values);
    while (Next()) {
    }
    return Finish();
}

qint64 CStatement::GetInteger(int column) const {
    return sqlite3_column_int64(m_statement, column);
}

QString CStatement::GetText(int column) const {
    const auto* text = static_cast<const QChar*>(sqlite3_column_text16(m_statement, column));
    const qsizetype bytes = sqlite3_column_bytes16(m_statement, column);
    return QString(text, bytes / static_cast<qsizetype>(sizeof(QChar)));
}

QByteArrayView CStatement::GetBlob(int column) const {
    const auto* bytes = static_cast<const char*>(sqlite3_column_blob(m_statement, column));
    return {bytes, sqlite3_column_bytes(m_statement, column)};
}

// Statements of a SQLite file, prepared once and run many times.
#pragma once

#include <QByteArrayView>
#include <QString>
#include <initializer_list>
#include <variant>

#include "store/engine/SqliteFile.h"

/// One value to bind. Texts and blobs must stay alive until the statement is finished.
using CSqlValue = std::variant<qint64, QByteArrayView, QStringView>;

/// A prepared statement: Start binds, Next steps through the rows, Finish resets and returns the
/// result.
class CStatement {
  public:
    CStatement() = default;
    ~CStatement();
    CStatement(const CStatement&) = delete;
    CStatement& operator=(const CStatement&) = delete;

    EPlatformError Prepare(CSqliteFile& file, const char* sql);
    [[nodiscard]] bool IsPrepared() const { return m_statement != nullptr; }
    void Release();

    void Start(std::initializer_list<CSqlValue> values);
    /// False at the end and on failure.
    bool Next();
    EPlatformError Finish();
    /// Start, every row, Finish.
    EPlatformError Run(std::initializer_list<CSqlValue> values);

    [[nodiscard]] qint64 GetInteger(int column) const;
    [[nodiscard]] QString GetText(int column) const;
    /// Valid until the next call of Next or Finish.
    [[nodiscard]] QByteArrayView GetBlob(int column) const;

  private:
    CSqliteFile* m_file = nullptr;
    sqlite3_stmt* m_statement = nullptr;
    int m_result = 0;
};

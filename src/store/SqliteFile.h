// The SQLite file under the engine: opening it safely, transactions, and statements that are
// prepared once. Results are platform error numbers.
#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringView>
#include <optional>
#include <variant>

#include "store/FileStamp.h"
#include "store/PlatformError.h"

struct sqlite3;
struct sqlite3_stmt;

/// Holds its file exclusively from a successful Open until Close.
class CSqliteFile {
  public:
    CSqliteFile() = default;
    ~CSqliteFile();
    CSqliteFile(const CSqliteFile&) = delete;
    CSqliteFile& operator=(const CSqliteFile&) = delete;

    /// Opens a volume; a missing or empty file becomes one. A refused file keeps every byte, and a
    /// file that this call created goes again when it fails.
    int Open(const QString& path);
    /// Takes the file away again if Open created it: for a volume that could not be filled.
    void RemoveCreated();
    /// All statements must be gone.
    int Close();
    [[nodiscard]] bool IsOpen() const { return m_connection != nullptr; }

    int Begin();
    int Commit();
    /// Safe when SQLite has rolled back on its own already.
    void Rollback();

    int Prepare(const char* sql, sqlite3_stmt*& statement);
    /// The platform number of a result that the connection gave last.
    [[nodiscard]] int ErrorOf(int sqliteResult) const;
    [[nodiscard]] qint64 GetLastRowId() const;

  private:
    int OpenConnection();
    int LockAndCheck();
    int CheckHeader(bool mayBeBlank, bool& isEmpty) const;
    int Execute(const char* sql);

    sqlite3* m_connection = nullptr;
    QByteArray m_path;
    std::optional<CFileStamp> m_created;  ///< of a file that was not there before Open
};

/// One value to bind. Texts and blobs must stay alive until the statement is finished.
using CSqlValue = std::variant<qint64, QByteArrayView, QStringView>;

/// A prepared statement: Start binds, Next steps through the rows, Finish resets and tells how it
/// went.
class CStatement {
  public:
    CStatement() = default;
    ~CStatement();
    CStatement(const CStatement&) = delete;
    CStatement& operator=(const CStatement&) = delete;

    int Prepare(CSqliteFile& file, const char* sql);
    void Release();

    void Start(std::initializer_list<CSqlValue> values);
    /// False at the end and on failure.
    bool Next();
    int Finish();
    /// Start, every row, Finish.
    int Run(std::initializer_list<CSqlValue> values);

    [[nodiscard]] qint64 GetInteger(int column) const;
    [[nodiscard]] QString GetText(int column) const;
    /// Valid until the next call of Next or Finish.
    [[nodiscard]] QByteArrayView GetBlob(int column) const;

  private:
    CSqliteFile* m_file = nullptr;
    sqlite3_stmt* m_statement = nullptr;
    int m_result = 0;
};

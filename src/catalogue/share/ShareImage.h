// The bytes of a share file as an SQLite database in memory. Nothing is read from or written to a
// disk, so journals, locks and other files beside it play no part.
#pragma once

#include <sqlite3.h>

#include <QByteArray>
#include <initializer_list>
#include <optional>
#include <variant>

#include "store/engine/PlatformError.h"

/// Either made by Create, to be filled, or by Open, to be read.
class CShareImage {
  public:
    CShareImage() = default;
    ~CShareImage();
    CShareImage(const CShareImage&) = delete;
    CShareImage& operator=(const CShareImage&) = delete;

    /// An empty share file. Writes past kMostShareBytes fail with kErrorDiskFull.
    EPlatformError Create();
    /// The file that has been written; valid until the next write.
    [[nodiscard]] QByteArrayView Bytes() const;

    /// The bytes may be those of any file. All but a sound share file is refused before anything in
    /// it is used: kErrorBadFormat when it is none, kErrorNewerVersion, or
    /// kErrorCorrupt. What the tables hold is not checked. Reading is limited in work and in the
    /// size of values; past a limit it fails with kErrorCorrupt.
    EPlatformError Open(QByteArray bytes);

  private:
    friend class CShareStatement;

    EPlatformError Connect();
    EPlatformError Execute(const char* sql);
    void Harden();
    EPlatformError CheckTables();
    EPlatformError CheckPages();
    [[nodiscard]] EPlatformError ErrorOf(int result) const;

    sqlite3* m_connection = nullptr;
    QByteArray m_bytes;        ///< of Open; the connection reads them in place
    int m_work = 0;            ///< what reading may still do
    bool m_isForeign = false;  ///< opened, not created
};

/// A prepared statement. Values are read only in the type that was stored: SQLite itself would turn
/// any type into any other.
class CShareStatement {
  public:
    CShareStatement(CShareImage& image, const char* sql);
    ~CShareStatement();
    CShareStatement(const CShareStatement&) = delete;
    CShareStatement& operator=(const CShareStatement&) = delete;

    /// Binds the values and runs it once.
    EPlatformError Run(std::initializer_list<std::variant<qint64, QByteArrayView>> values);

    /// False at the end and on failure.
    bool Next();
    /// Of the last Next.
    [[nodiscard]] EPlatformError GetError() const { return m_image.ErrorOf(m_result); }
    // Nothing when the value has another type. Views are valid until the next call of Next.
    [[nodiscard]] std::optional<qint64> Integer(int column) const;
    [[nodiscard]] std::optional<QByteArrayView> Blob(int column) const;
    /// UTF-8.
    [[nodiscard]] std::optional<QByteArrayView> Text(int column) const;

  private:
    [[nodiscard]] std::optional<QByteArrayView> Bytes(int column, int type) const;

    CShareImage& m_image;
    sqlite3_stmt* m_statement = nullptr;
    int m_result = SQLITE_OK;
};

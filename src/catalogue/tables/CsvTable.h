// A table in CSV as RFC 4180 describes it, read row by row.
#pragma once

#include <QFile>
#include <functional>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

/// A column that a reader uses; the others of the table are skipped.
struct CTableColumn {
    const char* name;  ///< as in the first row
    bool isRequired = true;
};

/// One table of a download. The columns are numbered by their places in `columns`.
struct CTableLayout {
    const char* file;  ///< "food.csv"
    std::span<const CTableColumn> columns;
};

/// The text is UTF-8, with or without a mark at its start; rows end in LF or CR LF. A quoted field
/// may contain commas, line ends and doubled quotes. Blank lines are skipped.
///
/// Invariants:
/// 1. Memory is bounded: a row has at most kMostRowBytes.
/// 2. A table is damaged when it lacks a required column, when a row has more or fewer fields than
///    the first one or more than kMostRowBytes, when a quote is where none may be or is missing,
///    and when the caller refuses a value. It then has no further rows.
class CCsvTable {
  public:
    static constexpr qsizetype kMostRowBytes = qsizetype{1} << 20;
    /// Called for each block that has been read; false cancels.
    using OnBlock = std::function<bool(qsizetype bytes)>;

    /// Opens the table and reads its first row. `layout` outlives it.
    CCsvTable(const QString& path, const CTableLayout& layout, OnBlock onBlock = {});

    /// False at the end of the table, after damage and after a cancel. Fields of the row before
    /// are no longer valid.
    bool NextRow();
    /// UTF-8, with the quotes resolved; empty when the table does not have the column.
    [[nodiscard]] std::string_view Field(int column) const { return m_fields[column]; }
    /// False when the field is not a whole number from 0 to 2^32 - 1; the table is then damaged.
    bool ReadNumber(int column, quint32& number);
    /// False when the field is not a finite decimal number; the table is then damaged.
    bool ReadAmount(int column, double& amount);
    /// The current row is damaged; returns false.
    bool Refuse(const QString& reason);

    /// Why the table cannot be read, with its name and the line: "food.csv, line 3: ...". Empty
    /// while nothing is wrong.
    [[nodiscard]] const QString& GetError() const { return m_error; }
    [[nodiscard]] bool IsCancelled() const { return m_isCancelled; }

  private:
    enum class EParsed { Row, Blank, Incomplete, Damaged };

    bool ReadHeader();
    EParsed ParseRow();
    void TakeField(std::string_view field, bool isDoubled);
    /// Ends the row at a separator that is not a comma.
    EParsed EndRow(const char* at);
    void ResolveQuotes();
    /// Reads a further block after the bytes of the row that is not complete.
    bool Refill();
    bool RefuseField(int column);
    /// `reason` follows the table's name; returns false.
    bool SetError(const QString& reason);

    const CTableLayout& m_layout;
    OnBlock m_onBlock;
    QFile m_file;
    QString m_error;
    bool m_isCancelled = false;
    bool m_isAtEnd = false;

    // One quote follows the bytes read, so that no search for one runs past them.
    std::vector<char> m_buffer;
    qint64 m_bufferStart = 0;  ///< its place in the file
    const char* m_row = nullptr;
    const char* m_at = nullptr;  ///< the next row
    const char* m_end = nullptr;

    /// For each column of the table its place in the layout, or -1; empty for the first row.
    std::vector<int> m_wanted;
    std::vector<std::string_view> m_fields;
    std::vector<int> m_doubled;  ///< fields of the row with doubled quotes
    size_t m_fieldCount = 0;
};

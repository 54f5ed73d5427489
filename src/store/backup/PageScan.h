// Reads the rows of a damaged volume straight off its pages, without the trees that lead to them:
// a row is found as long as its own page is readable.
#pragma once

#include <QFile>
#include <functional>
#include <optional>
#include <variant>
#include <vector>

/// A value of a row: nothing, a number, a blob, or a text in UTF-8. Other numbers than integers do
/// not occur in a volume.
struct CScannedText {
    QByteArray utf8;
};
using ScannedValue = std::variant<std::monostate, qint64, QByteArray, CScannedText>;

/// Where a row is in the file.
struct CRowPlace {
    quint32 page = 0;  ///< from 1
    quint16 cell = 0;
};

struct CScannedRow {
    qint64 id = 0;           ///< of the row; 0 in an index
    bool isOfIndex = false;  ///< or of a table without such identifiers
    std::vector<ScannedValue> values;
};

/// Anything may be in the file. A page that the disk cannot read has no rows.
class CPageScan {
  public:
    /// False when the file cannot be read.
    bool Open(const QString& path);
    [[nodiscard]] quint32 CountPages() const { return m_pages; }
    /// Whether the file has fewer pages than it had.
    [[nodiscard]] bool IsCut() const { return m_isCut; }
    /// Calls `visit` with every row of a page that can be read.
    void ForEachRow(quint32 page,
                    const std::function<void(const CRowPlace&, const CScannedRow&)>& visit) const;
    /// Reads a row again.
    [[nodiscard]] std::optional<CScannedRow> RowAt(const CRowPlace& place) const;

  private:
    /// What the kind of a page says about its cells.
    struct CPageKind {
        bool isIndex = false;
        bool isInner = false;
        int header = 0;  ///< offset of the page's header; the cells' places follow it
        int cells = 0;
    };
    /// Shorter at the end of a file that was cut; empty when it cannot be read.
    [[nodiscard]] QByteArray Page(quint32 number) const;
    [[nodiscard]] std::optional<CPageKind> KindOf(quint32 number, QByteArrayView page) const;
    [[nodiscard]] std::optional<CScannedRow> RowIn(QByteArrayView page, const CPageKind& kind,
                                                   int cell) const;
    [[nodiscard]] std::optional<QByteArray> PayloadAt(QByteArrayView local, qint64 size,
                                                      bool isIndex) const;
    void FindFreePages(quint32 trunk);

    QFile m_file;
    quint32 m_pages = 0;
    bool m_isCut = false;
    std::vector<bool> m_isFree;  ///< by page
};

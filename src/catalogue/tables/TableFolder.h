// The folder of a download: opens its tables and keeps the first thing that went wrong.
#pragma once

#include "catalogue/tables/CsvTable.h"
#include "platform/Progress.h"

/// The tables' layouts outlive it, as does the progress display.
class CTableFolder {
  public:
    explicit CTableFolder(QString path) : m_path(std::move(path)) {}
    /// Shows how many of `bytes` have been read from now on, and notices Cancel.
    void SetProgress(CProgress& progress, qint64 bytes);

    [[nodiscard]] bool Has(const CTableLayout& layout) const { return SizeOf(layout) > 0; }
    /// In bytes; 0 when the folder does not have the table.
    [[nodiscard]] qint64 SizeOf(const CTableLayout& layout) const;
    [[nodiscard]] CCsvTable Open(const CTableLayout& layout);
    /// Call when a table has no further row. False when it was not read to its end.
    [[nodiscard]] bool HasReadAll(const CCsvTable& table);

    /// Empty while nothing is wrong.
    [[nodiscard]] const QString& GetError() const { return m_error; }

  private:
    [[nodiscard]] QString PathOf(const CTableLayout& layout) const;

    QString m_path;
    QString m_error;
    CProgress* m_progress = nullptr;
    qint64 m_bytesRead = 0;
};

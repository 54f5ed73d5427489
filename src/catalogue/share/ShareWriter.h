// Writes a share file row by row into memory.
#pragma once

#include <memory>

#include "catalogue/share/ShareFormat.h"
#include "catalogue/share/ShareImage.h"

/// After the first failure all calls do nothing.
class CShareWriter {
  public:
    CShareWriter();
    ~CShareWriter();

    /// These return the number of the row, from 1 on. `category` and `item` are such numbers,
    /// `item` is 0 when it is not known what a component was made of. A component belongs to the
    /// item added last.
    int AddCategory(const PropertyList& category);
    int AddItem(int category, const PropertyList& item);
    void AddComponent(int item, const PropertyList& component);
    [[nodiscard]] const CShareContents& Contents() const { return m_contents; }

    /// Whether Finish will fail, so that adding more is no use.
    [[nodiscard]] bool HasFailed() const {
        return m_error != kErrorSuccess || !IsWithinLimits(m_contents);
    }
    /// Ends the file: its bytes, valid while this lives. kErrorInvalidParameter when it would
    /// exceed a limit of ShareFormat.h.
    EPlatformError Finish(QByteArrayView& bytes);

  private:
    struct CStatements;

    void Run(CShareStatement& statement,
             std::initializer_list<std::variant<qint64, QByteArrayView>> values);

    CShareImage m_image;
    EPlatformError m_error;
    std::unique_ptr<CStatements> m_statements;
    CShareContents m_contents;  ///< its checksum is set at the end
    CRowsChecksum m_categories;
    CRowsChecksum m_items;
    QByteArray m_body;  ///< of the row being written; keeps its memory
};

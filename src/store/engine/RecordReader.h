// Reading records by identifier.
#pragma once

#include "store/engine/PropertyValue.h"
#include "store/engine/Statement.h"

/// Records are mostly read in the order in which they were added. So the statement of one read
/// stays open for the next, which then costs a step instead of a search.
class CRecordReader {
  public:
    EPlatformError Prepare(CSqliteFile& file);
    void Release();

    /// kErrorFileNotFound when there is no such record; `most` as in CStorageEngine::ReadRecord.
    EPlatformError Read(qint64 record, PropertyList& properties, int most);
    /// The same for the whole stored form, copied.
    EPlatformError ReadBody(qint64 record, QByteArray& body);
    /// Resets the statement. Call before every change of the file.
    void Pause();

  private:
    EPlatformError StepTo(qint64 record);

    CStatement m_statement;
    bool m_isOpen = false;
    qint64 m_last = 0;
};

// Checks the index of one database and every record that it lists.
#pragma once

#include <functional>
#include <vector>

#include "store/backup/Findings.h"
#include "store/engine/PositionIndex.h"
#include "store/engine/RecordReader.h"
#include "store/engine/StorageEngine.h"
#include "store/records/RecordLayout.h"

/// The rows of the index of a database, in order, as far as they can be read.
struct CIndexRows {
    std::vector<CIndexEntry> entries;  ///< of the blocks that are sound
    qint64 expected = 0;  ///< the entries that the blocks say they hold, as far as known
    bool isSound = true;
};
/// Reads the blocks of a database and checks them against each other.
CIndexRows ReadIndexRows(CSqliteFile& file, ObjectId database);

class CDatabaseCheck {
  public:
    /// Called with every sound record.
    using Visitor = std::function<void(ObjectId record, const PropertyList& properties)>;
    /// Called after each record; false cancels the check.
    using Pulse = std::function<bool()>;

    CDatabaseCheck(CSqliteFile& file, CFindings& findings) : m_file(file), m_findings(findings) {}

    /// `layout` may be null: then only the engine's own rules are checked. False when cancelled.
    bool Check(const CDatabaseInfo& database, const CRecordLayout* layout, const Visitor& visit,
               const Pulse& pulse);
    /// Records that no database lists, and those that are listed more than once. Call last.
    void CheckLists();

  private:
    void CheckRecord(const CIndexEntry& entry, const CRecordLayout* layout, const Visitor& visit);

    CSqliteFile& m_file;
    CFindings& m_findings;
    CRecordReader m_reader;
    bool m_isPrepared = false;
    std::vector<ObjectId> m_listed;  ///< by all databases checked so far
    bool m_isComplete = true;        ///< every index could be read
    QString m_name;                  ///< of the database under way
    int m_unreadable = 0;            ///< in it
    int m_missing = 0;               ///< in it
    PropertyList m_properties;
    QByteArray m_body;
};

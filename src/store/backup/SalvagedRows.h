// The rows of a damaged volume, as far as they can be read, told apart by the table they are of.
#pragma once

#include <map>
#include <unordered_map>

#include "store/backup/PageScan.h"
#include "store/engine/FileOperations.h"
#include "store/engine/PositionIndex.h"
#include "store/engine/StorageEngine.h"

struct CSalvagedValue {
    ObjectId owner = 0;
    QString name;
    QString value;
};

/// A part of the list of a database.
struct CSalvagedBlock {
    ObjectId database = 0;
    qint64 ordinal = 0;
    qint64 firstKey = 0;
    qint64 count = 0;
    std::vector<CIndexEntry> entries;  ///< none in the directory
    CRowPlace place;

    [[nodiscard]] bool IsSameAs(const CSalvagedBlock& other) const {
        return database == other.database && ordinal == other.ordinal;
    }
};
using SalvagedBlocks = std::multimap<qint64, CSalvagedBlock>;  ///< by the identifier of their row

/// What the rows say need not be true, nor agree.
class CSalvagedRows {
  public:
    /// Reads the file. kErrorBadFormat when there is nothing of a volume in it.
    EPlatformError Read(const QString& path, const CopyProgress& progress);

    /// Whether the file has fewer pages than it had.
    [[nodiscard]] bool IsCut() const { return m_scan.IsCut(); }
    [[nodiscard]] const std::unordered_map<ObjectId, CRowPlace>& Records() const {
        return m_records;
    }
    /// Reads a record; false when there is none with this number or it cannot be decoded.
    [[nodiscard]] bool Decode(ObjectId record, PropertyList& properties) const;
    [[nodiscard]] const std::map<ObjectId, CDatabaseInfo>& Infos() const { return m_infos; }
    [[nodiscard]] const SalvagedBlocks& Blocks() const { return m_blocks; }
    /// The same as the index of the blocks has it.
    [[nodiscard]] const SalvagedBlocks& Directory() const { return m_directory; }
    /// Whether the index of the blocks, which is in order of database and ordinal, would be with
    /// this database in that row of it.
    [[nodiscard]] bool IsInOrder(ObjectId database, const CSalvagedBlock& listed) const;
    /// Small values of the volume and of profiles.
    [[nodiscard]] const std::vector<CSalvagedValue>& Values() const { return m_values; }
    /// The database that the history names for a record; 0 when it does not.
    [[nodiscard]] ObjectId HomeInHistory(ObjectId record) const;

  private:
    /// Consecutive records that were added to a database.
    struct CRun {
        ObjectId database = 0;
        qint64 count = 0;
    };

    void TakeRow(const CRowPlace& place, const CScannedRow& row);
    void TakeTableRow(const CRowPlace& place, const CScannedRow& row);
    void TakeIndexRow(const CRowPlace& place, const CScannedRow& row);

    CPageScan m_scan;
    std::unordered_map<ObjectId, CRowPlace> m_records;
    std::map<ObjectId, CDatabaseInfo> m_infos;
    SalvagedBlocks m_blocks;
    SalvagedBlocks m_directory;
    std::map<ObjectId, CRun> m_history;  ///< by the first record; the last change of it
    std::vector<CSalvagedValue> m_values;
};

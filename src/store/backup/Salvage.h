// What can still be read of a damaged volume: its databases, and which record is where in them.
#pragma once

#include <map>
#include <unordered_map>

#include "store/backup/PageScan.h"
#include "store/engine/FileOperations.h"
#include "store/engine/PositionIndex.h"
#include "store/engine/StorageEngine.h"
#include "store/records/RecordLayout.h"

struct CSalvagedDatabase {
    CDatabaseInfo info;
    const CRecordLayout* layout = nullptr;  ///< never null once Read has returned
    std::vector<CIndexEntry> entries;       ///< records that can be read, in their order
    qint64 listed = 0;                      ///< records that the index lists, as far as it is known
};

struct CSalvagedValue {
    ObjectId owner = 0;
    QString name;
    QString value;
};

/// A record that no list names goes to the only database of its layout, or to the one that the
/// history names, or to the only one whose list has a gap.
class CSalvage {
  public:
    /// Reads the file. kErrorBadFormat when there is nothing of a volume in it.
    EPlatformError Read(const QString& path, const CopyProgress& progress = {});

    [[nodiscard]] std::vector<CSalvagedDatabase>& Databases() { return m_databases; }
    /// Small values of the volume and of profiles.
    [[nodiscard]] const std::vector<CSalvagedValue>& Values() const { return m_values; }
    /// Readable records that no database could be found for.
    [[nodiscard]] int CountHomeless() const { return m_homeless; }
    /// The values of a record of one of the databases, cut to what its layout allows; false when it
    /// does not fit it.
    bool ReadRecord(ObjectId record, const CRecordLayout& layout, PropertyList& properties) const;

  private:
    struct CBlock {
        ObjectId database = 0;
        qint64 ordinal = 0;
        qint64 count = 0;
        std::vector<CIndexEntry> entries;  ///< none: only the directory knows the block
    };

    /// Consecutive records that were added to a database.
    struct CRun {
        ObjectId database = 0;
        qint64 count = 0;
    };

    void TakeRow(const CRowPlace& place, const CScannedRow& row);
    void TakeTableRow(const CRowPlace& place, const CScannedRow& row);
    void TakeIndexRow(const CScannedRow& row);
    void PlaceListed();
    void NameDatabases();
    void PlaceUnlisted();
    CSalvagedDatabase* HomeOf(ObjectId record, const PropertyList& properties);
    [[nodiscard]] ObjectId HomeInHistory(ObjectId record) const;
    [[nodiscard]] bool Decode(ObjectId record, PropertyList& properties) const;
    [[nodiscard]] const CRecordLayout* LayoutOfFirst(const CSalvagedDatabase& database) const;

    CPageScan m_scan;
    std::unordered_map<ObjectId, CRowPlace> m_records;
    std::map<ObjectId, CDatabaseInfo> m_infos;
    std::map<qint64, CBlock> m_blocks;   ///< by the identifier of their row
    std::map<ObjectId, CRun> m_history;  ///< by the first record; the last change of it
    std::vector<CSalvagedDatabase> m_databases;
    std::vector<CSalvagedValue> m_values;
    int m_homeless = 0;
};

// What can still be read of a damaged volume: its databases, and which record is where in them.
#pragma once

#include <map>
#include <unordered_map>
#include <unordered_set>

#include "store/backup/PageScan.h"
#include "store/engine/FileOperations.h"
#include "store/engine/PositionIndex.h"
#include "store/engine/StorageEngine.h"
#include "store/records/RecordLayout.h"

struct CSalvagedDatabase {
    CDatabaseInfo info;
    const CRecordLayout* layout = nullptr;  ///< never null once Read has returned
    std::vector<CIndexEntry> entries;       ///< records that can be read, in their order
    std::vector<CIndexEntry> missing;       ///< listed, but no record has that number and key
    qint64 listed = 0;                      ///< records that the index lists, as far as it is known

    [[nodiscard]] bool HasGap() const { return std::ssize(entries) < listed; }
};

struct CSalvagedValue {
    ObjectId owner = 0;
    QString name;
    QString value;
};

/// A list that may be one of two databases' is left out. A record that no list names goes to the
/// database whose list has its number but for one bit, or to the one that the history names, or to
/// the only one of its layout, or to the only one whose list has a gap; a diary gets it in the last
/// two ways only if lists are damaged.
class CSalvage {
  public:
    /// Reads the file. kErrorBadFormat when there is nothing of a volume in it.
    EPlatformError Read(const QString& path, const CopyProgress& progress = {});

    [[nodiscard]] std::vector<CSalvagedDatabase>& Databases() { return m_databases; }
    /// Small values of the volume and of profiles.
    [[nodiscard]] const std::vector<CSalvagedValue>& Values() const { return m_values; }
    /// Readable records that no database could be found for.
    [[nodiscard]] int CountHomeless() const { return m_homeless; }
    /// The values of a record of one of the databases as they are stored; false when they are not
    /// of the types of its layout.
    bool ReadRecord(ObjectId record, const CRecordLayout& layout, PropertyList& properties) const;

  private:
    struct CBlock {
        ObjectId database = 0;
        qint64 ordinal = 0;
        qint64 firstKey = 0;
        qint64 count = 0;
        std::vector<CIndexEntry> entries;  ///< none in the directory
        CRowPlace place;

        [[nodiscard]] bool IsSameAs(const CBlock& other) const {
            return database == other.database && ordinal == other.ordinal;
        }
    };
    using Blocks = std::multimap<qint64, CBlock>;  ///< by the identifier of their row
    using Lists = std::map<ObjectId, std::vector<const CBlock*>>;

    /// Consecutive records that were added to a database.
    struct CRun {
        ObjectId database = 0;
        qint64 count = 0;
    };

    void TakeRow(const CRowPlace& place, const CScannedRow& row);
    void TakeTableRow(const CRowPlace& place, const CScannedRow& row);
    void TakeIndexRow(const CRowPlace& place, const CScannedRow& row);
    Lists ListsOfDatabases();
    bool PlaceListed();
    bool PlaceBlock(const CBlock& block, CSalvagedDatabase& database,
                    std::vector<CIndexEntry>& misfits);
    void PlaceMisnumbered(CSalvagedDatabase& database);
    static bool Contains(const Blocks& blocks, const Blocks::value_type& block);
    ObjectId OwnerOf(qint64 row, const CBlock& block);
    [[nodiscard]] bool CanOwn(ObjectId database, const CBlock& block, const CBlock& listed) const;
    [[nodiscard]] bool IsInOrder(ObjectId database, const CBlock& listed) const;
    bool PlaceUnlisted();
    bool Advance();
    CSalvagedDatabase* HomeOf(ObjectId record, const PropertyList& properties);
    [[nodiscard]] ObjectId HomeInHistory(ObjectId record) const;
    [[nodiscard]] bool Decode(ObjectId record, PropertyList& properties) const;
    [[nodiscard]] const CRecordLayout* LayoutOfFirst(const std::vector<CIndexEntry>& entries) const;

    CPageScan m_scan;
    std::unordered_map<ObjectId, CRowPlace> m_records;
    std::map<ObjectId, CDatabaseInfo> m_infos;
    Blocks m_blocks;
    Blocks m_directory;                  ///< the same as the index of the blocks has it
    std::map<ObjectId, CRun> m_history;  ///< by the first record; the last change of it
    std::unordered_set<ObjectId> m_placed;
    std::vector<CSalvagedDatabase> m_databases;
    std::vector<CSalvagedValue> m_values;
    bool m_areListsWhole = false;  ///< every block is sound, and in the index of the blocks
    int m_homeless = 0;
    CopyProgress m_progress;
    qint64 m_done = 0;  ///< records that have been placed, or could not be
};

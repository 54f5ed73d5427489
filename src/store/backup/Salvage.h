// What can still be read of a damaged volume: its databases, and which record is where in them.
#pragma once

#include <unordered_set>

#include "store/backup/SalvagedRows.h"
#include "store/records/RecordLayout.h"

struct CSalvagedDatabase {
    CDatabaseInfo info;
    const CRecordLayout* layout = nullptr;  ///< never null once Read has returned
    std::vector<CIndexEntry> entries;       ///< records that can be read, in their order
    std::vector<CIndexEntry> missing;       ///< listed, but no record has that number and key
    qint64 listed = 0;                      ///< records that the index lists, as far as it is known

    [[nodiscard]] bool HasGap() const { return std::ssize(entries) < listed; }
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
    [[nodiscard]] const std::vector<CSalvagedValue>& Values() const { return m_rows.Values(); }
    /// Readable records that no database could be found for.
    [[nodiscard]] int CountHomeless() const { return m_homeless; }
    /// The values of a record of one of the databases as they are stored; false when they are not
    /// of the types of its layout.
    bool ReadRecord(ObjectId record, const CRecordLayout& layout, PropertyList& properties) const;

  private:
    using Lists = std::map<ObjectId, std::vector<const CSalvagedBlock*>>;

    Lists ListsOfDatabases();
    bool PlaceListed();
    bool PlaceBlock(const CSalvagedBlock& block, CSalvagedDatabase& database,
                    std::vector<CIndexEntry>& misfits);
    void PlaceMisnumbered(CSalvagedDatabase& database);
    static bool Contains(const SalvagedBlocks& blocks, const SalvagedBlocks::value_type& block);
    ObjectId OwnerOf(qint64 row, const CSalvagedBlock& block);
    [[nodiscard]] bool CanOwn(ObjectId database, const CSalvagedBlock& block,
                              const CSalvagedBlock& listed) const;
    bool PlaceUnlisted();
    bool Advance();
    CSalvagedDatabase* HomeOf(ObjectId record, const PropertyList& properties);
    [[nodiscard]] const CRecordLayout* LayoutOfFirst(const std::vector<CIndexEntry>& entries) const;

    CSalvagedRows m_rows;
    SalvagedBlocks m_directory;  ///< rows that no list has taken yet
    std::unordered_set<ObjectId> m_placed;
    std::vector<CSalvagedDatabase> m_databases;
    bool m_areListsWhole = false;  ///< every block is sound, and in the index of the blocks
    int m_homeless = 0;
    CopyProgress m_progress;
    qint64 m_done = 0;  ///< records that have been placed, or could not be
};

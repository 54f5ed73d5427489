// The engine under the record store: named, typed databases of typed records in one SQLite file.
// It knows nothing of what the records mean.
//
// Invariants:
// 1. A write that reported success outside a group survives a kill and a loss of power.
// 2. A group becomes durable as a whole at EndGroup, or not at all.
// 3. Records are in ascending order of property 0, equal keys in order of insertion.
// 4. Seek, lower bound, insert and delete cost O(log n); mounting reads no record, and the first
//    use of a database reads only the directory of its position blocks.
// 5. One process holds the volume; another one gets kErrorSharingViolation and changes nothing.
// 6. A file that is not a volume, or is of a newer version, is refused and left as it is.
// 7. When another program removes, replaces or overwrites the open file, every write fails with
//    kErrorFileInvalid. From an overwritten file nothing more is read either.
// 8. A journal is played back only into the volume it was written for.
#pragma once

#include <QString>
#include <memory>
#include <vector>

#include "store/engine/PlatformError.h"
#include "store/engine/PropertyValue.h"
#include "store/engine/VolumeHeader.h"
#include "store/engine/VolumeState.h"

class CChangeListener;
struct CStorageState;

using ObjectId = qint64;  ///< of a database or a record; 0: none

inline constexpr int kMaximumDatabaseName = 31;

struct CDatabaseInfo {
    ObjectId id = 0;
    QString name;  ///< at most kMaximumDatabaseName characters
    quint32 type = 0;
    quint32 sortPropertyId = 0;  ///< property 0 with an integer or date type
};

/// Identifiers of databases and records are never reused. Keys are property 0 widened to 64 bits.
class CStorageEngine {
  public:
    CStorageEngine();
    ~CStorageEngine();

    /// Creates the file when it is missing.
    EPlatformError Mount(const QString& path, quint32 version = kVolumeVersion);
    EPlatformError Unmount();
    /// Unmounts, and removes the file if Mount created it.
    EPlatformError Discard();
    [[nodiscard]] bool IsMounted() const;
    /// What had become of the open file when it was last checked.
    [[nodiscard]] EVolumeState GetVolumeState() const;
    /// See SaveVolumeCopy. kErrorInvalidParameter inside a group that has written.
    EPlatformError SaveCopy(const QString& path);
    /// See CSqliteFile.
    [[nodiscard]] QString GetKeptJournal() const;

    /// kErrorInvalidName past 31 characters, kErrorAlreadyExists when the name is taken
    /// (compared without case), kErrorInvalidParameter for a sort on anything but an integer or
    /// date property 0.
    EPlatformError CreateDatabase(const QString& name, quint32 type, quint32 sortPropertyId,
                                  CDatabaseInfo& info);
    EPlatformError FindDatabase(const QString& name, CDatabaseInfo& info);
    /// All databases of a type in order of creation; type 0 matches all.
    EPlatformError ListDatabases(quint32 type, std::vector<CDatabaseInfo>& databases);
    /// Deletes the database with its records.
    EPlatformError DeleteDatabase(ObjectId database);

    EPlatformError CountRecords(ObjectId database, int& count);
    /// kErrorFileNotFound when there is no such position.
    EPlatformError SeekToPosition(ObjectId database, int position, ObjectId& record);
    /// First position whose key is not below `key`; the record count when all are below.
    EPlatformError LowerBound(ObjectId database, qint64 key, int& position);
    /// Position of a record, found by its key; kErrorFileNotFound when it is not in the database.
    EPlatformError FindRecord(ObjectId database, ObjectId record, int& position);
    /// Key at a position.
    EPlatformError KeyAt(ObjectId database, int position, qint64& key);
    /// Reads the first `most` values only: the list has the length of the record, and the rest of
    /// it is unspecified. kErrorFileNotFound when there is no such record.
    EPlatformError ReadRecord(ObjectId record, PropertyList& properties, int most = kAllProperties);
    /// Bytes of a record's stored form.
    EPlatformError SizeOfRecord(ObjectId record, int& size);
    /// Sets `record` to the identifier of the new record.
    EPlatformError AddRecord(ObjectId database, const PropertyList& properties, ObjectId& record);
    /// Overwrites a record and moves it when its key changed.
    EPlatformError ReplaceRecord(ObjectId database, ObjectId record,
                                 const PropertyList& properties);
    EPlatformError DeleteRecord(ObjectId database, ObjectId record);

    /// Groups nest; only the outermost EndGroup makes durable. When a write inside a group or
    /// EndGroup fails, the whole group is undone and every following write of the group fails
    /// with the same number until the outermost EndGroup, which returns it too.
    EPlatformError BeginGroup();
    EPlatformError EndGroup();
    /// Undoes the whole group at once, nested or not, as a failed write in it does.
    EPlatformError UndoGroup();

    /// The listener is called with the changes of this engine until it is removed.
    void AddListener(CChangeListener* listener);
    void RemoveListener(CChangeListener* listener);

    /// For CNamedValues; lives as long as the engine.
    [[nodiscard]] CStorageState& State() { return *m_state; }

  private:
    std::unique_ptr<CStorageState> m_state;
};

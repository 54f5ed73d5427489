// What the storage engine keeps while a volume is mounted: the file, its prepared statements, the
// indexes of the databases in use.
#pragma once

#include <optional>
#include <unordered_map>

#include "store/engine/ChangeFeed.h"
#include "store/engine/IdAllocator.h"
#include "store/engine/PositionIndex.h"
#include "store/engine/RecordReader.h"
#include "store/engine/Statement.h"
#include "store/engine/StorageEngine.h"
#include "store/engine/VolumeGeneration.h"

/// Owned by the engine.
struct CStorageState {
    struct COpenDatabase {
        CPositionIndex index;
        int lastSought = 0;
    };

    /// kErrorInvalidParameter when nothing is mounted, kErrorFileInvalid when another program has
    /// overwritten the file.
    EPlatformError CheckReadable() const;
    EPlatformError PrepareStatements();
    /// After Abandon.
    void ReleaseStatements();
    /// Loads the index at first use; `opened` is valid until the database is deleted or a write
    /// fails.
    EPlatformError Open(ObjectId database, COpenDatabase*& opened);
    /// Finds a record by its key, after trying the position sought last: callers overwrite or
    /// delete what they have just sought, and equal keys may be many.
    EPlatformError Locate(COpenDatabase& opened, ObjectId record, int& position,
                          CIndexEntry& entry);
    /// The stored form and place of a record of a watched database before it changes; nothing of an
    /// unwatched one. `body` holds the bytes.
    EPlatformError ReadBefore(ObjectId database, ObjectId record, int position,
                              const CIndexEntry& entry, QByteArray& body, CRecordState& before);
    EPlatformError RemoveRecord(ObjectId record);
    EPlatformError DeleteAllRecords(COpenDatabase& opened);
    /// Begins the transaction of a unit of work, at its first change.
    EPlatformError BeginUnit();
    /// Commits what the unit has changed, if anything. On failure the caller calls Abandon.
    EPlatformError CommitUnit();
    /// Rolls back, and drops the indexes, which no longer match the file; they are loaded again
    /// when needed.
    void Abandon();

    /// Runs a change as a unit of work by itself or as part of the open group; a failure undoes the
    /// whole group. So callers first refuse whatever they can without touching the file.
    template <typename Change>
    EPlatformError Write(Change change) {
        if (groupError != kErrorSuccess) {
            return groupError;
        }
        reader.Pause();
        const bool isAlone = groupDepth == 0;
        EPlatformError error = isInUnit ? kErrorSuccess : BeginUnit();
        if (error == kErrorSuccess) {
            error = change();
        }
        if (error == kErrorSuccess && isAlone) {
            error = CommitUnit();
        }
        if (error != kErrorSuccess) {
            Abandon();
            groupError = isAlone ? kErrorSuccess : error;
        }
        return error;
    }

    CSqliteFile file;
    CVolumeGeneration generation{file};
    CIdAllocator recordIds{*this, "SELECT max(id) FROM records", "last record"};
    CIdAllocator databaseIds{*this, "SELECT max(id) FROM databases", "last database"};
    CBlockStatements blocks;
    CStatement listDatabases;
    CStatement addDatabase;
    CStatement removeDatabase;
    CStatement removeBlocks;
    CRecordReader reader;
    CStatement addRecord;
    CStatement replaceRecord;
    CStatement removeRecord;
    CChangeFeed feed;
    std::unordered_map<ObjectId, COpenDatabase> open;
    QByteArray body;
    bool isInUnit = false;
    int groupDepth = 0;
    EPlatformError groupError = kErrorSuccess;
};

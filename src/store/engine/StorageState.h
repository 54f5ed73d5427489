// What the storage engine keeps while a volume is mounted: the file, its prepared statements, the
// indexes of the databases in use.
#pragma once

#include <optional>
#include <unordered_map>

#include "store/engine/GivenIds.h"
#include "store/engine/PositionIndex.h"
#include "store/engine/RecordReader.h"
#include "store/engine/SqliteFile.h"
#include "store/engine/StorageEngine.h"
#include "store/engine/VolumeGeneration.h"

/// Owned by the engine. Operations return platform error numbers.
struct CStorageState {
    struct COpenDatabase {
        CPositionIndex index;
        int lastSought = 0;
    };

    /// kErrorFileInvalid when what the file holds is not ours any more.
    EPlatformError CheckReadable() const;
    EPlatformError PrepareStatements();
    void ReleaseStatements();
    /// Loads the index at the first use; `opened` holds until the database goes or a write fails.
    EPlatformError Open(ObjectId database, COpenDatabase*& opened);
    /// A record's place is found again by its key, and among many equal keys by the position
    /// sought last: callers write over or delete what they have just sought.
    EPlatformError Locate(COpenDatabase& opened, ObjectId record, int& position,
                          CIndexEntry& entry);
    EPlatformError RemoveRecord(ObjectId record);
    EPlatformError DeleteAllRecords(COpenDatabase& opened);
    /// Begins the transaction of a unit of work, at its first change.
    EPlatformError BeginUnit();
    /// Commits what the unit changed, if anything.
    EPlatformError CommitUnit();
    /// Rolls back. The indexes hold what the file has not kept; they are read again when they are
    /// needed.
    void Abandon();

    /// Runs a change as a transaction of its own, or as part of the group. What can be refused
    /// without touching the file is refused before and leaves a group as it is.
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
    CGivenIds recordIds{*this, "SELECT max(id) FROM records", "last record"};
    CGivenIds databaseIds{*this, "SELECT max(id) FROM databases", "last database"};
    CBlockStatements blocks;
    CStatement listDatabases;
    CStatement addDatabase;
    CStatement removeDatabase;
    CStatement removeBlocks;
    CRecordReader reader;
    CStatement addRecord;
    CStatement replaceRecord;
    CStatement removeRecord;
    std::unordered_map<ObjectId, COpenDatabase> open;
    QByteArray body;
    bool isInUnit = false;
    int groupDepth = 0;
    EPlatformError groupError = kErrorSuccess;
};

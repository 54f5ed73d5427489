#include "store/engine/StorageState.h"

#include "store/engine/RecordCodec.h"

EPlatformError CStorageState::CheckReadable() const {
    if (!file.IsOpen()) {
        return kErrorInvalidParameter;
    }
    return file.GetState() == EVolumeState::Overwritten ? kErrorFileInvalid : kErrorSuccess;
}

EPlatformError CStorageState::PrepareStatements() {
    struct CRow {
        CStatement& statement;
        const char* sql;
    };
    const CRow rows[] = {
        {listDatabases, "SELECT id, name, type, sort FROM databases ORDER BY id"},
        {addDatabase, "INSERT INTO databases(id, name, type, sort) VALUES(nullif(?,0),?,?,?)"},
        {removeDatabase, "DELETE FROM databases WHERE id=?"},
        {removeBlocks, "DELETE FROM blocks WHERE database=?"},
        {addRecord, "INSERT INTO records(id, body) VALUES(nullif(?,0),?)"},
        {replaceRecord, "REPLACE INTO records(body, id) VALUES(?,?)"},
        {removeRecord, "DELETE FROM records WHERE id=?"},
    };
    for (const CRow& row : rows) {
        if (const EPlatformError error = row.statement.Prepare(file, row.sql);
            error != kErrorSuccess) {
            return error;
        }
    }
    const EPlatformError error = reader.Prepare(file);
    return error == kErrorSuccess ? blocks.Prepare(file) : error;
}

void CStorageState::ReleaseStatements() {
    for (CStatement* statement : {&listDatabases, &addDatabase, &removeDatabase, &removeBlocks,
                                  &addRecord, &replaceRecord, &removeRecord}) {
        statement->Release();
    }
    generation.Release();
    reader.Release();
    blocks.Release();
}

EPlatformError CStorageState::Open(ObjectId database, COpenDatabase*& opened) {
    if (const EPlatformError error = CheckReadable(); error != kErrorSuccess) {
        return error;
    }
    if (const auto found = open.find(database); found != open.end()) {
        opened = &found->second;
        return kErrorSuccess;
    }
    bool isKnown = false;
    listDatabases.Start({});
    while (listDatabases.Next()) {
        isKnown = isKnown || listDatabases.GetInteger(0) == database;
    }
    if (const EPlatformError error = listDatabases.Finish(); error != kErrorSuccess) {
        return error;
    }
    if (!isKnown) {
        return kErrorFileNotFound;
    }
    COpenDatabase fresh{CPositionIndex(file, blocks, database)};
    if (const EPlatformError error = fresh.index.Load(); error != kErrorSuccess) {
        return error;
    }
    opened = &open.emplace(database, std::move(fresh)).first->second;
    return kErrorSuccess;
}

EPlatformError CStorageState::Locate(COpenDatabase& opened, ObjectId record, int& position,
                                     CIndexEntry& entry) {
    EPlatformError error = kErrorSuccess;
    if (opened.lastSought < opened.index.Count()) {
        position = opened.lastSought;
        error = opened.index.EntryAt(position, entry);
        if (error != kErrorSuccess || entry.record == record) {
            return error;
        }
    }
    PropertyList properties;
    error = reader.Read(record, properties, 1);
    if (error != kErrorSuccess) {
        return error;
    }
    const std::optional<qint64> key = KeyOf(properties);
    if (!key) {
        return kErrorCorrupt;
    }
    // The last one of a key is the newest, which is sought most.
    error = opened.index.UpperBound(*key, position);
    if (error == kErrorSuccess && --position >= 0) {
        error = opened.index.EntryAt(position, entry);
        if (error != kErrorSuccess || entry.record == record) {
            return error;
        }
    }
    if (error == kErrorSuccess) {
        error = opened.index.LowerBound(*key, position);
    }
    for (; error == kErrorSuccess && position < opened.index.Count(); ++position) {
        error = opened.index.EntryAt(position, entry);
        if (error == kErrorSuccess && entry.record == record) {
            return kErrorSuccess;
        }
        if (error == kErrorSuccess && entry.key != *key) {
            break;
        }
    }
    return error != kErrorSuccess ? error : kErrorFileNotFound;
}

EPlatformError CStorageState::ReadBefore(ObjectId database, ObjectId record, int position,
                                         const CIndexEntry& entry, QByteArray& body,
                                         CRecordState& before) {
    if (!feed.IsWatched(database)) {
        return kErrorSuccess;
    }
    int first = 0;
    EPlatformError error = open.at(database).index.LowerBound(entry.key, first);
    if (error == kErrorSuccess) {
        error = reader.ReadBody(record, body);
        reader.Pause();
    }
    if (error == kErrorFileNotFound) {
        error = kErrorSuccess;  // a damaged volume: the index lists a record that is not there
    }
    before = {true, body, entry.key, position - first};
    return error;
}

EPlatformError CStorageState::RemoveRecord(ObjectId record) {
    const EPlatformError error = recordIds.KeepBeforeRemoving(record);
    return error == kErrorSuccess ? removeRecord.Run({record}) : error;
}

EPlatformError CStorageState::DeleteAllRecords(COpenDatabase& opened) {
    while (opened.index.Count() > 0) {
        const int last = opened.index.Count() - 1;
        CIndexEntry entry{};
        EPlatformError error = opened.index.EntryAt(last, entry);
        if (error == kErrorSuccess) {
            error = RemoveRecord(entry.record);
        }
        if (error != kErrorSuccess) {
            return error;
        }
        opened.index.RemoveAt(last);
    }
    return opened.index.Flush();
}

// The file is checked to be still as we left it before a unit writes its first byte and again
// before it commits.
EPlatformError CStorageState::BeginUnit() {
    isInUnit = true;
    EPlatformError error = file.CheckPlace();
    if (error == kErrorSuccess && !generation.IsInPlace()) {
        file.SetOverwritten();
        error = kErrorFileInvalid;
    }
    if (error == kErrorSuccess) {
        error = feed.BeginUnit();
    }
    return error == kErrorSuccess ? generation.Begin() : error;
}

EPlatformError CStorageState::CommitUnit() {
    reader.Pause();
    if (!isInUnit) {
        return CheckReadable();
    }
    for (auto& [id, opened] : open) {
        if (const EPlatformError error = opened.index.Flush(); error != kErrorSuccess) {
            return error;
        }
    }
    EPlatformError error = feed.EndUnit();
    if (error == kErrorSuccess) {
        error = file.CheckPlace();
    }
    if (error == kErrorSuccess) {
        error = generation.Commit();
    }
    if (error == kErrorSuccess) {
        isInUnit = false;
        feed.NoteCommit();
    }
    return error;
}

void CStorageState::Abandon() {
    reader.Pause();
    file.Rollback();
    isInUnit = false;
    recordIds.Forget();
    databaseIds.Forget();
    open.clear();
    feed.NoteAbandonment();
}

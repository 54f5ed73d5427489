#include "store/StorageEngine.h"

#include "store/PositionIndex.h"
#include "store/RecordCodec.h"
#include "store/RecordReader.h"
#include "store/SqliteFile.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace {
bool IsSortable(quint32 sortPropertyId) {
    for (const EPropertyType type :
         {EPropertyType::Int16, EPropertyType::Int32, EPropertyType::FileTime}) {
        if (sortPropertyId == PropertyId(0, type)) {
            return true;
        }
    }
    return false;
}

std::optional<qint64> KeyOf(const PropertyList& properties) {
    if (properties.empty() || properties.size() > kMaximumProperties) {
        return std::nullopt;
    }
    const PropertyValue& value = properties.front();
    if (const auto* small = std::get_if<qint16>(&value)) {
        return *small;
    }
    if (const auto* medium = std::get_if<qint32>(&value)) {
        return *medium;
    }
    if (const auto* wide = std::get_if<qint64>(&value)) {
        return *wide;
    }
    return std::nullopt;
}
}  // namespace

// A record's place is found again by its key, and among many equal keys by the position sought
// last: callers write over or delete what they have just sought.
struct CStorageEngine::CState {
    struct COpenDatabase {
        CPositionIndex index;
        int lastSought = 0;
    };

    int PrepareStatements();
    void ReleaseStatements();
    int Open(ObjectId database, COpenDatabase*& open);
    int Locate(COpenDatabase& opened, ObjectId record, int& position, CIndexEntry& entry);
    int DeleteAllRecords(COpenDatabase& open);
    int CommitAll();
    void Abandon();

    // Runs a change as a transaction of its own, or as part of the group. What can be refused
    // without touching the file is refused before and leaves a group as it is.
    template <typename Change>
    int Write(Change change) {
        if (groupError != kErrorSuccess) {
            return groupError;
        }
        reader.Pause();
        const bool isAlone = groupDepth == 0;
        int error = isAlone ? file.Begin() : static_cast<int>(kErrorSuccess);
        if (error == kErrorSuccess) {
            error = change();
        }
        if (error == kErrorSuccess && isAlone) {
            error = CommitAll();
        }
        if (error != kErrorSuccess) {
            Abandon();
            groupError = isAlone ? static_cast<int>(kErrorSuccess) : error;
        }
        return error;
    }

    CSqliteFile file;
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
    int groupDepth = 0;
    int groupError = kErrorSuccess;
};

int CStorageEngine::CState::PrepareStatements() {
    struct CRow {
        CStatement& statement;
        const char* sql;
    };
    const CRow rows[] = {
        {listDatabases, "SELECT id, name, type, sort FROM databases ORDER BY id"},
        {addDatabase, "INSERT INTO databases(name, type, sort) VALUES(?,?,?)"},
        {removeDatabase, "DELETE FROM databases WHERE id=?"},
        {removeBlocks, "DELETE FROM blocks WHERE database=?"},
        {addRecord, "INSERT INTO records(body) VALUES(?)"},
        {replaceRecord, "REPLACE INTO records(body, id) VALUES(?,?)"},
        {removeRecord, "DELETE FROM records WHERE id=?"},
    };
    for (const CRow& row : rows) {
        if (const int error = row.statement.Prepare(file, row.sql); error != kErrorSuccess) {
            return error;
        }
    }
    const int error = reader.Prepare(file);
    return error == kErrorSuccess ? blocks.Prepare(file) : error;
}

void CStorageEngine::CState::ReleaseStatements() {
    for (CStatement* statement : {&listDatabases, &addDatabase, &removeDatabase, &removeBlocks,
                                  &addRecord, &replaceRecord, &removeRecord}) {
        statement->Release();
    }
    reader.Release();
    blocks.Release();
}

int CStorageEngine::CState::Open(ObjectId database, COpenDatabase*& opened) {
    if (!file.IsOpen()) {
        return kErrorInvalidParameter;
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
    if (const int error = listDatabases.Finish(); error != kErrorSuccess) {
        return error;
    }
    if (!isKnown) {
        return kErrorFileNotFound;
    }
    COpenDatabase fresh{CPositionIndex(file, blocks, database)};
    if (const int error = fresh.index.Load(); error != kErrorSuccess) {
        return error;
    }
    opened = &open.emplace(database, std::move(fresh)).first->second;
    return kErrorSuccess;
}

int CStorageEngine::CState::Locate(COpenDatabase& opened, ObjectId record, int& position,
                                   CIndexEntry& entry) {
    int error = kErrorSuccess;
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
    error = opened.index.LowerBound(*key, position);
    for (; error == kErrorSuccess && position < opened.index.Count(); ++position) {
        error = opened.index.EntryAt(position, entry);
        if (error == kErrorSuccess && entry.record == record) {
            return kErrorSuccess;
        }
        if (error == kErrorSuccess && entry.key != *key) {
            break;
        }
    }
    return error != kErrorSuccess ? error : static_cast<int>(kErrorFileNotFound);
}

int CStorageEngine::CState::DeleteAllRecords(COpenDatabase& opened) {
    while (opened.index.Count() > 0) {
        const int last = opened.index.Count() - 1;
        CIndexEntry entry{};
        int error = opened.index.EntryAt(last, entry);
        if (error == kErrorSuccess) {
            error = removeRecord.Run({entry.record});
        }
        if (error == kErrorSuccess) {
            error = opened.index.RemoveAt(last);
        }
        if (error != kErrorSuccess) {
            return error;
        }
    }
    return opened.index.Flush();
}

int CStorageEngine::CState::CommitAll() {
    reader.Pause();
    for (auto& [id, opened] : open) {
        if (const int error = opened.index.Flush(); error != kErrorSuccess) {
            return error;
        }
    }
    return file.Commit();
}

// The indexes hold what the file has not kept; they are read again when they are needed.
void CStorageEngine::CState::Abandon() {
    reader.Pause();
    file.Rollback();
    open.clear();
}

CStorageEngine::CStorageEngine() : m_state(std::make_unique<CState>()) {}

CStorageEngine::~CStorageEngine() {
    Unmount();
}

int CStorageEngine::Mount(const QString& path) {
    if (IsMounted()) {
        return kErrorInvalidParameter;
    }
    int error = m_state->file.Open(path);
    if (error == kErrorSuccess) {
        error = m_state->PrepareStatements();
    }
    if (error != kErrorSuccess) {
        Unmount();
    }
    return error;
}

int CStorageEngine::Unmount() {
    m_state->Abandon();
    m_state->groupDepth = 0;
    m_state->groupError = kErrorSuccess;
    m_state->ReleaseStatements();
    return m_state->file.Close();
}

bool CStorageEngine::IsMounted() const {
    return m_state->file.IsOpen();
}

int CStorageEngine::CreateDatabase(const QString& name, quint32 type, quint32 sortPropertyId,
                                   CDatabaseInfo& info) {
    if (name.isEmpty() || name.size() > kMaximumDatabaseName) {
        return kErrorInvalidName;
    }
    if (!IsSortable(sortPropertyId)) {
        return kErrorInvalidParameter;
    }
    const int found = FindDatabase(name, info);
    if (found != kErrorFileNotFound) {
        return found == kErrorSuccess ? static_cast<int>(kErrorAlreadyExists) : found;
    }
    return m_state->Write([&] {
        const int error = m_state->addDatabase.Run({name, qint64{type}, qint64{sortPropertyId}});
        info = {m_state->file.GetLastRowId(), name, type, sortPropertyId};
        return error;
    });
}

// Compared here, since SQLite folds the case of ASCII letters only.
int CStorageEngine::FindDatabase(const QString& name, CDatabaseInfo& info) {
    std::vector<CDatabaseInfo> databases;
    if (const int error = ListDatabases(0, databases); error != kErrorSuccess) {
        return error;
    }
    const auto found = std::ranges::find_if(databases, [&name](const CDatabaseInfo& database) {
        return database.name.compare(name, Qt::CaseInsensitive) == 0;
    });
    if (found == databases.end()) {
        return kErrorFileNotFound;
    }
    info = *found;
    return kErrorSuccess;
}

int CStorageEngine::ListDatabases(quint32 type, std::vector<CDatabaseInfo>& databases) {
    databases.clear();
    if (!IsMounted()) {
        return kErrorInvalidParameter;
    }
    CStatement& list = m_state->listDatabases;
    list.Start({});
    while (list.Next()) {
        const CDatabaseInfo info{list.GetInteger(0), list.GetText(1),
                                 static_cast<quint32>(list.GetInteger(2)),
                                 static_cast<quint32>(list.GetInteger(3))};
        if (type == 0 || info.type == type) {
            databases.push_back(info);
        }
    }
    return list.Finish();
}

// A damaged database can be deleted too: the records that its index no longer names stay behind,
// unreachable.
int CStorageEngine::DeleteDatabase(ObjectId database) {
    CState::COpenDatabase* opened = nullptr;
    const int found = m_state->Open(database, opened);
    if (found != kErrorSuccess && found != kErrorCorrupt) {
        return found;
    }
    return m_state->Write([&] {
        int error = found == kErrorSuccess ? m_state->DeleteAllRecords(*opened) : found;
        if (error == kErrorCorrupt) {
            error = m_state->removeBlocks.Run({database});
        }
        if (error == kErrorSuccess) {
            error = m_state->removeDatabase.Run({database});
        }
        m_state->open.erase(database);
        return error;
    });
}

int CStorageEngine::CountRecords(ObjectId database, int& count) {
    CState::COpenDatabase* opened = nullptr;
    const int error = m_state->Open(database, opened);
    count = error == kErrorSuccess ? opened->index.Count() : 0;
    return error;
}

int CStorageEngine::SeekToPosition(ObjectId database, int position, ObjectId& record) {
    CState::COpenDatabase* opened = nullptr;
    if (const int error = m_state->Open(database, opened); error != kErrorSuccess) {
        return error;
    }
    if (position < 0 || position >= opened->index.Count()) {
        return kErrorFileNotFound;
    }
    CIndexEntry entry{};
    const int error = opened->index.EntryAt(position, entry);
    record = entry.record;
    opened->lastSought = position;
    return error;
}

int CStorageEngine::LowerBound(ObjectId database, qint64 key, int& position) {
    CState::COpenDatabase* opened = nullptr;
    const int error = m_state->Open(database, opened);
    return error == kErrorSuccess ? opened->index.LowerBound(key, position) : error;
}

int CStorageEngine::KeyAt(ObjectId database, int position, qint64& key) {
    CState::COpenDatabase* opened = nullptr;
    if (const int error = m_state->Open(database, opened); error != kErrorSuccess) {
        return error;
    }
    if (position < 0 || position >= opened->index.Count()) {
        return kErrorFileNotFound;
    }
    CIndexEntry entry{};
    const int error = opened->index.EntryAt(position, entry);
    key = entry.key;
    return error;
}

int CStorageEngine::ReadRecord(ObjectId record, PropertyList& properties, int most) {
    return IsMounted() ? m_state->reader.Read(record, properties, most)
                       : static_cast<int>(kErrorInvalidParameter);
}

int CStorageEngine::AddRecord(ObjectId database, const PropertyList& properties, ObjectId& record) {
    const std::optional<qint64> key = KeyOf(properties);
    if (!key) {
        return kErrorInvalidParameter;
    }
    CState::COpenDatabase* opened = nullptr;
    if (const int error = m_state->Open(database, opened); error != kErrorSuccess) {
        return error;
    }
    return m_state->Write([&] {
        EncodeRecord(properties, m_state->body);
        const int error = m_state->addRecord.Run({QByteArrayView(m_state->body)});
        if (error != kErrorSuccess) {
            return error;
        }
        record = m_state->file.GetLastRowId();
        return opened->index.Insert({*key, record});
    });
}

int CStorageEngine::ReplaceRecord(ObjectId database, ObjectId record,
                                  const PropertyList& properties) {
    const std::optional<qint64> key = KeyOf(properties);
    if (!key) {
        return kErrorInvalidParameter;
    }
    CState::COpenDatabase* opened = nullptr;
    int position = 0;
    CIndexEntry old{};
    int found = m_state->Open(database, opened);
    if (found == kErrorSuccess) {
        found = m_state->Locate(*opened, record, position, old);
    }
    if (found != kErrorSuccess) {
        return found;
    }
    return m_state->Write([&] {
        EncodeRecord(properties, m_state->body);
        int error = m_state->replaceRecord.Run({QByteArrayView(m_state->body), record});
        if (error != kErrorSuccess || old.key == *key) {
            return error;
        }
        error = opened->index.RemoveAt(position);
        return error == kErrorSuccess ? opened->index.Insert({*key, record}) : error;
    });
}

int CStorageEngine::DeleteRecord(ObjectId database, ObjectId record) {
    CState::COpenDatabase* opened = nullptr;
    int position = 0;
    CIndexEntry old{};
    int found = m_state->Open(database, opened);
    if (found == kErrorSuccess) {
        found = m_state->Locate(*opened, record, position, old);
    }
    if (found != kErrorSuccess) {
        return found;
    }
    return m_state->Write([&] {
        const int error = m_state->removeRecord.Run({record});
        return error == kErrorSuccess ? opened->index.RemoveAt(position) : error;
    });
}

int CStorageEngine::BeginGroup() {
    if (!IsMounted()) {
        return kErrorInvalidParameter;
    }
    if (m_state->groupDepth == 0) {
        m_state->reader.Pause();
        if (const int error = m_state->file.Begin(); error != kErrorSuccess) {
            return error;
        }
    }
    ++m_state->groupDepth;
    return kErrorSuccess;
}

int CStorageEngine::EndGroup() {
    if (m_state->groupDepth == 0) {
        return kErrorInvalidParameter;
    }
    --m_state->groupDepth;
    if (m_state->groupDepth > 0) {
        return m_state->groupError;
    }
    int error = std::exchange(m_state->groupError, kErrorSuccess);
    if (error == kErrorSuccess) {
        error = m_state->CommitAll();
        if (error != kErrorSuccess) {
            m_state->Abandon();
        }
    }
    return error;
}

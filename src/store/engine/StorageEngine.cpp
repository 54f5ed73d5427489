#include "store/engine/StorageEngine.h"

#include "store/engine/RecordCodec.h"
#include "store/engine/RecordWrites.h"
#include "store/engine/StorageState.h"
#include "store/engine/VolumeCopy.h"

#include <algorithm>
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
}  // namespace

CStorageEngine::CStorageEngine() : m_state(std::make_unique<CStorageState>()) {}

CStorageEngine::~CStorageEngine() {
    (void)Unmount();  // a destructor cannot report a failure
}

EPlatformError CStorageEngine::Mount(const QString& path, quint32 version) {
    if (IsMounted()) {
        return kErrorInvalidParameter;
    }
    EPlatformError error = m_state->file.Open(path, version);
    if (error == kErrorSuccess) {
        error = m_state->PrepareStatements();
    }
    if (error == kErrorSuccess) {
        error = m_state->generation.Load();
    }
    if (error != kErrorSuccess) {
        (void)Discard();  // The first failure is the one to report.
    }
    return error;
}

EPlatformError CStorageEngine::Unmount() {
    m_state->Abandon();
    m_state->groupDepth = 0;
    m_state->groupError = kErrorSuccess;
    m_state->ReleaseStatements();
    return m_state->file.Close();
}

EPlatformError CStorageEngine::Discard() {
    m_state->file.RemoveCreated();
    return Unmount();
}

EVolumeState CStorageEngine::GetVolumeState() const {
    return m_state->file.GetState();
}

EPlatformError CStorageEngine::SaveCopy(const QString& path) {
    if (const EPlatformError error = m_state->CheckReadable(); error != kErrorSuccess) {
        return error;
    }
    return m_state->isInUnit ? kErrorInvalidParameter
                             : SaveVolumeCopy(m_state->file, path, EDamagedCopy::Kept);
}

QString CStorageEngine::GetKeptJournal() const {
    return m_state->file.GetKeptJournal();
}

bool CStorageEngine::IsMounted() const {
    return m_state->file.IsOpen();
}

EPlatformError CStorageEngine::CreateDatabase(const QString& name, quint32 type,
                                              quint32 sortPropertyId, CDatabaseInfo& info) {
    if (name.isEmpty() || name.size() > kMaximumDatabaseName) {
        return kErrorInvalidName;
    }
    if (!IsSortable(sortPropertyId)) {
        return kErrorInvalidParameter;
    }
    const EPlatformError found = FindDatabase(name, info);
    if (found != kErrorFileNotFound) {
        return found == kErrorSuccess ? kErrorAlreadyExists : found;
    }
    return m_state->Write([&] {
        qint64 id = 0;
        EPlatformError error = m_state->databaseIds.Allocate(id);
        if (error == kErrorSuccess) {
            error = m_state->addDatabase.Run({id, name, qint64{type}, qint64{sortPropertyId}});
        }
        info = {m_state->file.GetLastRowId(), name, type, sortPropertyId};
        return error;
    });
}

// Compared here, since SQLite folds the case of ASCII letters only.
EPlatformError CStorageEngine::FindDatabase(const QString& name, CDatabaseInfo& info) {
    std::vector<CDatabaseInfo> databases;
    if (const EPlatformError error = ListDatabases(0, databases); error != kErrorSuccess) {
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

EPlatformError CStorageEngine::ListDatabases(quint32 type, std::vector<CDatabaseInfo>& databases) {
    databases.clear();
    if (const EPlatformError error = m_state->CheckReadable(); error != kErrorSuccess) {
        return error;
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

// A damaged database can be deleted too; records that its index no longer lists stay in the file,
// unreachable.
EPlatformError CStorageEngine::DeleteDatabase(ObjectId database) {
    CStorageState::COpenDatabase* opened = nullptr;
    const EPlatformError found = m_state->Open(database, opened);
    if (found != kErrorSuccess && found != kErrorCorrupt) {
        return found;
    }
    return m_state->Write([&] {
        EPlatformError error = found == kErrorSuccess ? m_state->DeleteAllRecords(*opened) : found;
        if (error == kErrorCorrupt) {
            error = m_state->removeBlocks.Run({database});
        }
        if (error == kErrorSuccess) {
            error = m_state->databaseIds.KeepBeforeRemoving(database);
        }
        if (error == kErrorSuccess) {
            error = m_state->removeDatabase.Run({database});
        }
        m_state->open.erase(database);
        return error == kErrorSuccess ? m_state->feed.ReportDeletedDatabase(database) : error;
    });
}

EPlatformError CStorageEngine::CountRecords(ObjectId database, int& count) {
    CStorageState::COpenDatabase* opened = nullptr;
    const EPlatformError error = m_state->Open(database, opened);
    count = error == kErrorSuccess ? opened->index.Count() : 0;
    return error;
}

EPlatformError CStorageEngine::SeekToPosition(ObjectId database, int position, ObjectId& record) {
    CStorageState::COpenDatabase* opened = nullptr;
    if (const EPlatformError error = m_state->Open(database, opened); error != kErrorSuccess) {
        return error;
    }
    if (position < 0 || position >= opened->index.Count()) {
        return kErrorFileNotFound;
    }
    CIndexEntry entry{};
    const EPlatformError error = opened->index.EntryAt(position, entry);
    record = entry.record;
    opened->lastSought = position;
    return error;
}

EPlatformError CStorageEngine::LowerBound(ObjectId database, qint64 key, int& position) {
    CStorageState::COpenDatabase* opened = nullptr;
    const EPlatformError error = m_state->Open(database, opened);
    return error == kErrorSuccess ? opened->index.LowerBound(key, position) : error;
}

EPlatformError CStorageEngine::FindRecord(ObjectId database, ObjectId record, int& position) {
    CStorageState::COpenDatabase* opened = nullptr;
    if (const EPlatformError error = m_state->Open(database, opened); error != kErrorSuccess) {
        return error;
    }
    CIndexEntry entry{};
    return m_state->Locate(*opened, record, position, entry);
}

EPlatformError CStorageEngine::KeyAt(ObjectId database, int position, qint64& key) {
    CStorageState::COpenDatabase* opened = nullptr;
    if (const EPlatformError error = m_state->Open(database, opened); error != kErrorSuccess) {
        return error;
    }
    if (position < 0 || position >= opened->index.Count()) {
        return kErrorFileNotFound;
    }
    CIndexEntry entry{};
    const EPlatformError error = opened->index.EntryAt(position, entry);
    key = entry.key;
    return error;
}

EPlatformError CStorageEngine::ReadRecord(ObjectId record, PropertyList& properties, int most) {
    const EPlatformError error = m_state->CheckReadable();
    return error == kErrorSuccess ? m_state->reader.Read(record, properties, most) : error;
}

EPlatformError CStorageEngine::SizeOfRecord(ObjectId record, int& size) {
    QByteArray body;
    EPlatformError error = m_state->CheckReadable();
    if (error == kErrorSuccess) {
        error = m_state->reader.ReadBody(record, body);
    }
    size = static_cast<int>(body.size());
    return error;
}

EPlatformError CStorageEngine::AddRecord(ObjectId database, const PropertyList& properties,
                                         ObjectId& record) {
    const std::optional<qint64> key = KeyOf(properties);
    if (!key) {
        return kErrorInvalidParameter;
    }
    CStorageState::COpenDatabase* opened = nullptr;
    if (const EPlatformError error = m_state->Open(database, opened); error != kErrorSuccess) {
        return error;
    }
    return m_state->Write([&] {
        EncodeRecord(properties, m_state->body);
        record = 0;
        return CRecordWrites(*m_state, database, *opened).Add(record, m_state->body, {*key});
    });
}

EPlatformError CStorageEngine::ReplaceRecord(ObjectId database, ObjectId record,
                                             const PropertyList& properties) {
    const std::optional<qint64> key = KeyOf(properties);
    if (!key) {
        return kErrorInvalidParameter;
    }
    CStorageState::COpenDatabase* opened = nullptr;
    int position = 0;
    CIndexEntry old{};
    EPlatformError found = m_state->Open(database, opened);
    if (found == kErrorSuccess) {
        found = m_state->Locate(*opened, record, position, old);
    }
    if (found != kErrorSuccess) {
        return found;
    }
    return m_state->Write([&] {
        EncodeRecord(properties, m_state->body);
        return CRecordWrites(*m_state, database, *opened)
            .Replace(record, position, old, m_state->body, {*key});
    });
}

EPlatformError CStorageEngine::DeleteRecord(ObjectId database, ObjectId record) {
    CStorageState::COpenDatabase* opened = nullptr;
    int position = 0;
    CIndexEntry old{};
    EPlatformError found = m_state->Open(database, opened);
    if (found == kErrorSuccess) {
        found = m_state->Locate(*opened, record, position, old);
    }
    if (found != kErrorSuccess) {
        return found;
    }
    return m_state->Write(
        [&] { return CRecordWrites(*m_state, database, *opened).Remove(record, position, old); });
}

EPlatformError CStorageEngine::BeginGroup() {
    if (!IsMounted()) {
        return kErrorInvalidParameter;
    }
    ++m_state->groupDepth;  // The first change begins the transaction.
    return kErrorSuccess;
}

EPlatformError CStorageEngine::EndGroup() {
    if (m_state->groupDepth == 0) {
        return kErrorInvalidParameter;
    }
    --m_state->groupDepth;
    if (m_state->groupDepth > 0) {
        return m_state->groupError;
    }
    EPlatformError error = std::exchange(m_state->groupError, kErrorSuccess);
    if (error == kErrorSuccess) {
        error = m_state->CommitUnit();
        if (error != kErrorSuccess) {
            m_state->Abandon();
        }
    }
    return error;
}

EPlatformError CStorageEngine::UndoGroup() {
    if (m_state->groupDepth == 0) {
        return kErrorInvalidParameter;
    }
    if (m_state->groupError == kErrorSuccess) {
        m_state->Abandon();
        m_state->groupError = kErrorOperationAborted;
    }
    return kErrorSuccess;
}

void CStorageEngine::AddListener(CChangeListener* listener) {
    m_state->feed.Add(listener);
}

void CStorageEngine::RemoveListener(CChangeListener* listener) {
    m_state->feed.Remove(listener);
}

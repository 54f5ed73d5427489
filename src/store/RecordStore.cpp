#include "store/RecordStore.h"

#include "platform/LateProgress.h"
#include "store/VolumeTexts.h"
#include "store/backup/VolumeReplacement.h"
#include "store/engine/NamedValues.h"

#include <QFileInfo>
#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

CRecordStore::CRecordStore() {
    AddListener(&m_history);
}

CRecordStore::~CRecordStore() {
    (void)m_engine.Unmount();  // a destructor cannot report a failure
    RemoveListener(&m_history);
}

bool CRecordStore::MountVolume(const QString& path, std::span<const UpgradeStep> steps) {
    m_path = path;
    m_createdFolders = CreateFolders(QFileInfo(path).path());
    const bool wasThere = QFileInfo::exists(path);
    EPlatformError error = m_engine.Mount(path, VersionAfter(steps));
    if (error == kErrorOlderVersion) {
        error = UpgradeAndMount(steps);
    }
    const bool isMounted = SetLastError(error);
    if (const QString kept = m_engine.GetKeptJournal(); !kept.isEmpty()) {
        ShowMessage(KeptJournalText(kept, path), EMessageIcon::Warning);
    }
    if (isMounted) {
        if (wasThere) {
            CVolumeReplacement(path, {}).RemoveNew();
        }
        return true;
    }
    RemoveCreatedFolders();
    ShowFailedMount(m_lastError);
    return false;
}

EPlatformError CRecordStore::UpgradeAndMount(std::span<const UpgradeStep> steps) {
    CUpgraded upgraded;
    EPlatformError error = kErrorSuccess;
    {
        CLateProgress progress(u"Velmora: Upgrade"_s, u"Bringing your data up to date..."_s);
        error = UpgradeVolume(
            m_path, QDateTime::currentDateTime(), steps, upgraded,
            [&progress](qint64 done, qint64 total) { return progress.Update(done, total); });
    }
    if (error != kErrorSuccess) {
        return error;
    }
    if (!upgraded.backupFailure.isEmpty()) {
        ShowMessage(upgraded.backupFailure, EMessageIcon::Warning);
    }
    ShowMessage(FormatText("Your data was brought up to date. The former file is kept as '%s'."_L1,
                           {upgraded.keptPath}),
                EMessageIcon::Information);
    return m_engine.Mount(m_path, VersionAfter(steps));
}

bool CRecordStore::UnmountVolume() {
    if (SetLastError(m_engine.Unmount())) {
        return true;
    }
    ShowMessage(u"Failed unmounting the database."_s, EMessageIcon::Stop);
    return false;
}

void CRecordStore::DiscardVolume() {
    (void)m_engine.Discard();  // The error to report is the earlier one.
    RemoveCreatedFolders();
}

void CRecordStore::RemoveCreatedFolders() {
    RemoveFolders(std::exchange(m_createdFolders, {}));
}

CDatabaseHandle CRecordStore::OpenDatabase(const QString& name, quint32 sortPropertyId,
                                           quint32 type, bool openOnly) {
    CDatabaseInfo info;
    if (SetLastError(m_engine.FindDatabase(name, info))) {
        return {info.id};
    }
    if (m_lastError == kErrorNotEnoughMemory) {
        ShowMessage(u"Not enough memory"_s, EMessageIcon::Stop);
        return {};
    }
    if (openOnly) {
        return {};
    }
    if (SetLastError(m_engine.CreateDatabase(name, type, sortPropertyId, info))) {
        return {info.id};
    }
    ShowFailure(FormatText("ERROR: CeOpenDatabaseEx failed (%ld)"_L1, {m_lastError}),
                EMessageIcon::Stop);
    return {};
}

void CRecordStore::CloseDatabase(CDatabaseHandle& handle) {
    handle = {};
}

int CRecordStore::CountRecords(const CDatabaseHandle& handle) {
    int count = 0;
    return SetLastError(m_engine.CountRecords(handle.id, count)) ? count : 0;
}

ObjectId CRecordStore::SeekToPosition(CDatabaseHandle& handle, int position) {
    ObjectId record = 0;
    handle.sought = 0;
    if (!SetLastError(m_engine.SeekToPosition(handle.id, position, record))) {
        return 0;
    }
    handle.nextPosition = position;
    handle.sought = record;
    return record;
}

bool CRecordStore::ReadCurrent(CDatabaseHandle& handle, PropertyList& properties, int most) {
    const ObjectId record =
        handle.sought != 0 ? handle.sought : SeekToPosition(handle, handle.nextPosition);
    if (record == 0) {
        return false;
    }
    handle.sought = 0;
    ++handle.nextPosition;
    return SetLastError(m_engine.ReadRecord(record, properties, most));
}

bool CRecordStore::ReadRecord(ObjectId record, PropertyList& properties, int most) {
    return SetLastError(m_engine.ReadRecord(record, properties, most));
}

bool CRecordStore::WriteRecord(CDatabaseHandle& handle, ObjectId record,
                               const PropertyList& properties) {
    return SetLastError(record == 0 ? m_engine.AddRecord(handle.id, properties, record)
                                    : m_engine.ReplaceRecord(handle.id, record, properties));
}

bool CRecordStore::DeleteRecordQuietly(CDatabaseHandle& handle, int position) {
    const ObjectId record = SeekToPosition(handle, position);
    return record != 0 && SetLastError(m_engine.DeleteRecord(handle.id, record));
}

bool CRecordStore::DeleteRecord(CDatabaseHandle& handle, int position) {
    if (DeleteRecordQuietly(handle, position)) {
        return true;
    }
    ShowFailedDeletion();
    return false;
}

EReverted CRecordStore::Revert(const CHistoryStep& step) {
    EPlatformError error = kErrorSuccess;
    const EReverted reverted = m_history.Revert(step, error);
    SetLastError(error);
    return reverted;
}

bool CRecordStore::LoadHistory() {
    return SetLastError(m_history.Load());
}

bool CRecordStore::ClearHistory(std::optional<qint64> scope) {
    if (!SetLastError(m_history.Clear(scope))) {
        return false;
    }
    ShowStatus({});  // what it says can be undone is gone
    return true;
}

qint64 CRecordStore::EstimateRoom(const CDatabaseHandle& handle, const CPositionRange& range) {
    constexpr int kSamples = 512;
    const int step = std::max(1, range.count / kSamples);
    qint64 bytes = 0;
    int samples = 0;
    for (int position = 0; position < range.count; position += step) {
        ObjectId record = 0;
        int size = 0;
        if (m_engine.SeekToPosition(handle.id, range.first + position, record) == kErrorSuccess &&
            m_engine.SizeOfRecord(record, size) == kErrorSuccess) {
            bytes += size;
            ++samples;
        }
    }
    return samples == 0 ? 0 : HistoryRoom(samples, bytes) * range.count / samples;
}

void CRecordStore::ShowFailedDeletion() {
    ShowFailure(FormatText("Cannot delete record. Error=%d"_L1, {m_lastError}));
}

bool CRecordStore::EnumerateDatabases(quint32 type, std::vector<CDatabaseInfo>& databases) {
    return SetLastError(m_engine.ListDatabases(type, databases));
}

bool CRecordStore::DeleteDatabase(const QString& name, quint32 type) {
    CDatabaseInfo info;
    if (!SetLastError(m_engine.FindDatabase(name, info))) {
        return false;
    }
    return SetLastError(info.type == type ? m_engine.DeleteDatabase(info.id) : kErrorFileNotFound);
}

int CRecordStore::FirstPositionOf(CDatabaseHandle& handle, qint64 key) {
    return FirstPositionInRange(handle, key, key);
}

int CRecordStore::FirstPositionInRange(CDatabaseHandle& handle, qint64 low, qint64 high) {
    const int count = CountRecords(handle);
    if (count == 0) {
        return kNoPosition;
    }
    int position = 0;
    if (!SetLastError(m_engine.LowerBound(handle.id, low, position))) {
        return 0;
    }
    qint64 key = 0;
    if (position == count) {
        return kNoPosition;
    }
    if (!SetLastError(m_engine.KeyAt(handle.id, position, key))) {
        return 0;
    }
    return key <= high ? position : kNoPosition;
}

std::optional<CPositionRange> CRecordStore::RangeOf(const CDatabaseHandle& handle, qint64 low,
                                                    qint64 high) {
    int first = 0;
    int end = 0;
    const bool isFound = SetLastError(m_engine.LowerBound(handle.id, low, first)) &&
                         SetLastError(high == std::numeric_limits<qint64>::max()
                                          ? m_engine.CountRecords(handle.id, end)
                                          : m_engine.LowerBound(handle.id, high + 1, end));
    return isFound ? std::optional(CPositionRange{first, end - first}) : std::nullopt;
}

int CRecordStore::PositionOf(const CDatabaseHandle& handle, ObjectId record) {
    int position = kNoPosition;
    const EPlatformError error = m_engine.FindRecord(handle.id, record, position);
    // A record that no longer exists is not a failure.
    return SetLastError(error == kErrorFileNotFound ? kErrorSuccess : error) &&
                   error == kErrorSuccess
               ? position
               : kNoPosition;
}

std::optional<qint64> CRecordStore::KeyAt(CDatabaseHandle& handle, int position) {
    qint64 key = 0;
    return SetLastError(m_engine.KeyAt(handle.id, position, key)) ? std::optional(key)
                                                                  : std::nullopt;
}

std::optional<QString> CRecordStore::ReadValue(ObjectId owner, const QString& name) {
    std::optional<QString> value;
    (void)SetLastError(CNamedValues(m_engine.State()).Read(owner, name, value));
    return value;
}

bool CRecordStore::WriteValue(ObjectId owner, const QString& name, const QString& value) {
    return SetLastError(CNamedValues(m_engine.State()).Write(owner, name, value));
}

bool CRecordStore::DeleteValues(ObjectId owner) {
    return SetLastError(CNamedValues(m_engine.State()).DeleteOwner(owner));
}

bool CRecordStore::BeginGroup() {
    return SetLastError(m_engine.BeginGroup());
}

bool CRecordStore::EndGroup() {
    return SetLastError(m_engine.EndGroup());
}

bool CRecordStore::UndoGroup() {
    return SetLastError(m_engine.UndoGroup());
}

bool CRecordStore::IsVolumeLost() const {
    return m_engine.IsMounted() && m_engine.GetVolumeState() != EVolumeState::Sound;
}

void CRecordStore::ShowFailure(const QString& text, EMessageIcon icon) {
    CMessage message{text, icon};
    const EVolumeState state = m_engine.GetVolumeState();
    if (IsVolumeLost()) {
        m_isLossTold = true;
        message.detail = LostVolumeText(state, m_path);
        if (state != EVolumeState::Overwritten) {
            message.actions.push_back(
                {u"Save a copy..."_s,
                 [this] {
                     SaveCopy();
                     return false;
                 },
                 u"Everything confirmed before can still be saved as a copy."_s});
        }
        if (state != EVolumeState::Removed && m_lossHost.reopen) {
            message.actions.push_back({u"Open the new file"_s, [this] {
                                           m_lossHost.reopen();
                                           return true;
                                       }});
        }
    }
    ShowMessage(message);
}

void CRecordStore::ShowRefusedWrite() {
    if (IsVolumeLost()) {
        ShowFailure(u"The change was not stored."_s, EMessageIcon::Stop);
    }
}

bool CRecordStore::TellLoss() {
    if (!m_engine.IsMounted() || m_engine.GetVolumeState() != EVolumeState::Overwritten) {
        return false;
    }
    if (!m_isLossTold) {
        ShowFailure(u"The data file cannot be read any more."_s, EMessageIcon::Stop);
    }
    return true;
}

void CRecordStore::SaveCopy() {
    const QFileInfo volume(m_path);
    const QString path =
        ChooseFileToSave({.title = u"Save a copy"_s,
                          .defaultExtension = u".db"_s,
                          .filterName = u"Velmora data (*.db)"_s,
                          .initialName = volume.completeBaseName() + u"-copy.db"_s});
    if (path.isEmpty()) {
        return;
    }
    EPlatformError error = kErrorSuccess;
    {
        const CWaitCursor wait;
        error = m_engine.SaveCopy(path);
    }
    ShowMessage(CopyText(error, path),
                error == kErrorSuccess ? EMessageIcon::Result : EMessageIcon::Stop);
}

void CRecordStore::ShowStatus(const QString& text) {
    if (m_statusHost) {
        const QString warning = std::exchange(m_warning, {});
        m_statusHost(text.isEmpty() || warning.isEmpty() ? text + warning : warning + u' ' + text);
    }
}

void CRecordStore::ShowWarning(const QString& text) {
    if (m_statusHost) {
        m_statusHost(text);
        m_warning = text;
    } else {
        ShowMessage(text, EMessageIcon::Warning);
    }
}

bool CRecordStore::SetLastError(EPlatformError error) {
    m_lastError = error;
    if (error == kErrorFileInvalid && !m_isLossTold && m_lossHost.tell) {
        m_lossHost.tell();
    }
    return error == kErrorSuccess;
}

CRecordGroup::CRecordGroup(CRecordStore& store) : m_store(store), m_open(store.BeginGroup()) {}

CRecordGroup::~CRecordGroup() {
    Commit();
}

bool CRecordGroup::Commit() {
    const bool wasOpen = m_open;
    m_open = false;
    return !wasOpen || m_store.EndGroup();
}

void CRecordGroup::Undo() {
    if (m_open) {
        m_store.UndoGroup();
        Commit();
    }
}

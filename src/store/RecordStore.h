// The operations through which every database is reached, with their messages.
#pragma once

#include <QStringList>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "platform/Messages.h"
#include "store/backup/Upgrade.h"
#include "store/engine/History.h"
#include "store/engine/StorageEngine.h"

inline constexpr int kNoPosition = -1;

/// An open database. Invalid (id 0) before it is opened and after it is closed.
struct CDatabaseHandle {
    ObjectId id = 0;
    int nextPosition = 0;  ///< the position that ReadCurrent reads; each read advances it
    ObjectId sought = 0;   ///< the record at that position; 0: not known
    [[nodiscard]] bool IsValid() const { return id != 0; }
};

/// Consecutive positions.
struct CPositionRange {
    int first = 0;
    int count = 0;
};

/// How a program with windows reacts to a lost volume; each function does its work only after the
/// operation under way has returned. Unset ones are not offered.
struct CLossHost {
    std::function<void()> tell;    ///< calls TellLoss: a read was refused
    std::function<void()> reopen;  ///< opens the file that is at the volume's path now
};

/// Shows what was done, for instance in a status line.
using StatusHost = std::function<void(const QString& text)>;

/// Operations return success; GetLastError returns the platform number of the last failure.
/// Positions are valid until the next write or delete in their database.
class CRecordStore {
  public:
    CRecordStore();
    ~CRecordStore();
    CRecordStore(const CRecordStore&) = delete;
    CRecordStore& operator=(const CRecordStore&) = delete;

    /// Creates the directory of the path when it is missing, then mounts, creating the file.
    /// Failure shows "ERROR: CeMountDBVol failed (%ld)". Also shows a message when the journal of
    /// another volume was set aside. Removes what a killed restore or repair has left.
    /// A volume of an older version is upgraded first; a message says where it is kept.
    [[nodiscard]] bool MountVolume(const QString& path,
                                   std::span<const UpgradeStep> steps = kUpgradeSteps);
    /// Failure shows "Failed unmounting the database.".
    bool UnmountVolume();
    /// After a failed start: unmounts, discards what an open group wrote, and removes the file and
    /// the folders if MountVolume created them. Keeps the last error.
    void DiscardVolume();

    /// Opens by name; creates a missing one unless `openOnly`. Failure shows "Not enough memory"
    /// or, after creation was tried, "ERROR: CeOpenDatabaseEx failed (%ld)"; the handle is then
    /// invalid.
    CDatabaseHandle OpenDatabase(const QString& name, quint32 sortPropertyId, quint32 type,
                                 bool openOnly);
    static void CloseDatabase(CDatabaseHandle& handle);

    /// 0 when the records cannot be counted.
    int CountRecords(const CDatabaseHandle& handle);
    /// Identifier of the record at a position, 0 when there is none.
    ObjectId SeekToPosition(CDatabaseHandle& handle, int position);
    /// Reads the record sought last and moves on to the next one.
    /// `most` as in CStorageEngine::ReadRecord.
    [[nodiscard]] bool ReadCurrent(CDatabaseHandle& handle, PropertyList& properties,
                                   int most = kAllProperties);
    /// Reads a record of any database; false when there is no such record.
    [[nodiscard]] bool ReadRecord(ObjectId record, PropertyList& properties,
                                  int most = kAllProperties);
    /// Identifier 0 adds a record.
    [[nodiscard]] bool WriteRecord(CDatabaseHandle& handle, ObjectId record,
                                   const PropertyList& properties);
    /// Failure shows "Cannot delete record. Error=%d".
    [[nodiscard]] bool DeleteRecord(CDatabaseHandle& handle, int position);
    /// The same without the message.
    [[nodiscard]] bool DeleteRecordQuietly(CDatabaseHandle& handle, int position);
    /// "Cannot delete record. Error=%d" with the last error.
    void ShowFailedDeletion();

    /// False when the enumeration cannot be started or read; type 0 matches all.
    [[nodiscard]] bool EnumerateDatabases(quint32 type, std::vector<CDatabaseInfo>& databases);
    [[nodiscard]] bool DeleteDatabase(const QString& name, quint32 type);

    /// First position of a key; -1 when absent, 0 when the search meets a failed read (callers
    /// then see the first record).
    int FirstPositionOf(CDatabaseHandle& handle, qint64 key);
    /// First position whose key lies in [low, high]; -1 and 0 as above.
    int FirstPositionInRange(CDatabaseHandle& handle, qint64 low, qint64 high);
    /// The positions of the keys in [low, high]; nothing when they cannot be read.
    std::optional<CPositionRange> RangeOf(const CDatabaseHandle& handle, qint64 low, qint64 high);
    /// Position of a record; -1 when it is not in the database or cannot be found.
    int PositionOf(const CDatabaseHandle& handle, ObjectId record);
    /// Key at a position; nothing when there is none or it cannot be read.
    std::optional<qint64> KeyAt(CDatabaseHandle& handle, int position);

    /// See CNamedValues.
    std::optional<QString> ReadValue(ObjectId owner, const QString& name);
    [[nodiscard]] bool WriteValue(ObjectId owner, const QString& name, const QString& value);
    [[nodiscard]] bool DeleteValues(ObjectId owner);

    /// For tables beside the records; lives as long as the store.
    [[nodiscard]] CStorageState& EngineState() { return m_engine.State(); }
    /// See CStorageEngine.
    void AddListener(CChangeListener* listener) { m_engine.AddListener(listener); }
    void RemoveListener(CChangeListener* listener) { m_engine.RemoveListener(listener); }

    /// What was changed, to be undone. Commands name their changes by CStep.
    CHistory& History() { return m_history; }
    /// Undoes or redoes a step of the history.
    EReverted Revert(const CHistoryStep& step);
    /// See CHistory::Load.
    bool LoadHistory();
    bool ClearHistory(std::optional<qint64> scope);
    /// About the HistoryRoom of these records, judged by some of them when they are many.
    qint64 EstimateRoom(const CDatabaseHandle& handle, const CPositionRange& range);

    /// See CStorageEngine: writes between the two become durable together.
    bool BeginGroup();
    bool EndGroup();
    bool UndoGroup();

    [[nodiscard]] EPlatformError GetLastError() const { return m_lastError; }

    /// Shows the message of an operation that has just failed. When the volume was lost, a second
    /// text says what became of it, and saving a copy and opening the file now at its path are
    /// offered where they are possible.
    void ShowFailure(const QString& text, EMessageIcon icon = EMessageIcon::Plain);
    /// For a refused write that has no message of its own: shows one when the volume was lost.
    void ShowRefusedWrite();
    /// Whether the volume was removed, replaced or overwritten when it was last checked.
    [[nodiscard]] bool IsVolumeLost() const;
    /// True when the volume was overwritten, so that nothing can be read any more. Shows a message
    /// unless an earlier failure has already reported the loss.
    bool TellLoss();
    void SetLossHost(CLossHost host) { m_lossHost = std::move(host); }

    /// Shows what was done, a sentence, without asking for attention. An empty text clears the one
    /// shown.
    void ShowStatus(const QString& text);
    /// Shows a warning without stopping the work: in the status line together with the next text
    /// there; without one, as a message.
    void ShowWarning(const QString& text);
    void SetStatusHost(StatusHost host) { m_statusHost = std::move(host); }
    /// The step under way shows no status: a message has said that it was not done in full.
    void SilenceStep() { m_isStepSilent = true; }
    /// Whether that was called since the last call of this.
    bool TakeSilence() { return std::exchange(m_isStepSilent, false); }

  private:
    bool SetLastError(EPlatformError error);
    EPlatformError UpgradeAndMount(std::span<const UpgradeStep> steps);
    void SaveCopy();
    void RemoveCreatedFolders();

    CStorageEngine m_engine;
    CHistory m_history{m_engine.State()};
    EPlatformError m_lastError = kErrorSuccess;
    QString m_path;
    CLossHost m_lossHost;
    StatusHost m_statusHost;
    QString m_warning;  ///< that the next status text is to be shown with
    bool m_isStepSilent = false;
    bool m_isLossTold = false;
    QStringList m_createdFolders;  ///< by MountVolume, the innermost first
};

/// A group that ends when it goes out of scope, for loops that may be left early.
class CRecordGroup {
  public:
    explicit CRecordGroup(CRecordStore& store);
    ~CRecordGroup();
    CRecordGroup(const CRecordGroup&) = delete;
    CRecordGroup& operator=(const CRecordGroup&) = delete;
    /// Ends the group. False when what was written in it is lost; true when the group could not be
    /// begun, since each write was then durable by itself.
    bool Commit();
    /// Ends the group and undoes what was written in it and in the groups around it.
    void Undo();
    /// False when it could not be begun: each write is then a unit of work by itself.
    [[nodiscard]] bool IsOpen() const { return m_open; }

  private:
    CRecordStore& m_store;
    bool m_open;
};

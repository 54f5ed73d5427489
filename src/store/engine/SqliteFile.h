// The SQLite file under the engine: opening it safely, and transactions.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>
#include <optional>

#include "store/engine/FileOperations.h"
#include "store/engine/FileStamp.h"
#include "store/engine/PlatformError.h"
#include "store/engine/TreeWalk.h"
#include "store/engine/VolumeHeader.h"
#include "store/engine/VolumeLock.h"
#include "store/engine/VolumeWatch.h"

/// Holds its file exclusively from a successful Open until Close.
class CSqliteFile {
  public:
    CSqliteFile() = default;
    ~CSqliteFile();
    CSqliteFile(const CSqliteFile&) = delete;
    CSqliteFile& operator=(const CSqliteFile&) = delete;

    /// Opens a volume of that version; a missing or empty file becomes one. A refused file is not
    /// changed, and a file that this call created is removed again when it fails.
    EPlatformError Open(const QString& path, quint32 version = kVolumeVersion);
    /// Removes the file if Open created it: for a volume that could not be filled.
    void RemoveCreated();
    /// All statements must have been released.
    EPlatformError Close();
    [[nodiscard]] bool IsOpen() const { return m_connection != nullptr; }
    /// That of the last Open.
    [[nodiscard]] quint32 GetVersion() const { return m_version; }

    /// kErrorFileInvalid when the path no longer names this file as our last write left it.
    EPlatformError CheckPlace();
    /// As of the last check. Nothing more can be read from an overwritten file.
    [[nodiscard]] EVolumeState GetState() const { return m_watch.GetState(); }
    void SetOverwritten() { m_watch.SetOverwritten(); }
    /// Copies the content of the open file to another one. Not within a transaction.
    EPlatformError CopyTo(const QString& path, const CopyProgress& progress = {});

    /// Reads the whole file; kErrorCorrupt when any page is damaged or used twice. Nothing else may
    /// use the file while `progress` runs.
    EPlatformError CheckIntegrity(const CopyProgress& progress = {});
    /// `endless` gets the names of the tables and indexes whose pages do not end, see CTreeWalk.
    /// CheckIntegrity fails then; so must any check before it reads them. Not within a transaction.
    EPlatformError CheckTrees(std::vector<QString>& endless);

    /// From now on, long statements call `pulse` now and then, and fail with kErrorOperationAborted
    /// once it returns false. See CWatchedWork.
    void SetPulse(std::function<bool()> pulse);

    EPlatformError Begin();
    EPlatformError Commit();
    /// Safe when SQLite has already rolled back by itself.
    void Rollback();

    EPlatformError Execute(const char* sql);
    /// The tables whose names begin with `prefix`: not every volume has all.
    EPlatformError ListTables(QStringView prefix, std::vector<QString>& names);
    EPlatformError Prepare(const char* sql, sqlite3_stmt*& statement);
    /// Reads the file past every cache; fewer bytes than `size` at its end, none on failure.
    [[nodiscard]] QByteArray ReadRaw(qint64 offset, qint64 size) const;
    /// The journal of another volume that Open found beside this one and renamed: its new path.
    /// Empty when there was none.
    [[nodiscard]] QString GetKeptJournal() const;
    /// The platform number of the connection's latest result.
    EPlatformError ErrorOf(int sqliteResult) const;
    [[nodiscard]] qint64 GetLastRowId() const;

  private:
    EPlatformError OpenConnection();
    EPlatformError LockAndCheck();
    EPlatformError CheckHeader(bool hasJournal, bool& isEmpty) const;
    EPlatformError AdmitJournal();
    [[nodiscard]] CTreeWalk WalkTrees() const;
    [[nodiscard]] sqlite3_file* OwnFile() const;

    sqlite3* m_connection = nullptr;
    CVolumeWatch m_watch;
    QByteArray m_path;
    quint32 m_version = kVolumeVersion;  ///< the only one that is accepted
    QByteArray m_keptJournal;
    std::optional<CFileStamp> m_created;  ///< of a file that was not there before Open
    CVolumeLock m_lock;                   ///< from Open until Close
    std::function<bool()> m_pulse;
};

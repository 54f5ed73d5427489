#include "store/engine/SqliteFile.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include "store/engine/JournalCheck.h"
#include "store/engine/Statement.h"
#include "store/engine/VolumeHeader.h"
#include "store/engine/WatchedWork.h"

#include <QFileInfo>
#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <utility>

namespace {
constexpr char kSchema[] =
    "PRAGMA application_id=0x564C4D52;"
    "PRAGMA user_version=1;"
    "CREATE TABLE databases(id INTEGER PRIMARY KEY, name TEXT NOT NULL UNIQUE COLLATE NOCASE,"
    " type INTEGER NOT NULL, sort INTEGER NOT NULL);"
    "CREATE TABLE records(id INTEGER PRIMARY KEY, body BLOB NOT NULL);"
    "CREATE TABLE blocks(id INTEGER PRIMARY KEY, database INTEGER NOT NULL,"
    " ordinal INTEGER NOT NULL, firstKey INTEGER NOT NULL, count INTEGER NOT NULL,"
    " entries BLOB NOT NULL);"
    "CREATE INDEX directory ON blocks(database, ordinal, firstKey, count);";

// FULL syncs the journal, the file and the journal's invalidation, so a commit is durable when it
// returns. The cache is 8 MB: the working set of an import, whatever the size of the file. What is
// deleted is overwritten: it is gone when the history no longer keeps it.
constexpr char kSettings[] =
    "PRAGMA synchronous=FULL;"
    "PRAGMA cell_size_check=ON;"
    "PRAGMA secure_delete=ON;"
    "PRAGMA cache_size=-8192;";

constexpr quint32 kSchemaPage = 1;

bool HasJournal(const QByteArray& path) {
    struct stat status {};
    return ::stat((path + kJournalSuffix.data()).constData(), &status) == 0 && status.st_size > 0;
}

/// Neither SQLite nor Qt takes a path that starts with a slash or a point for a URI or a special
/// name. An absolute path would not do: the current folder's name may not be decodable.
QByteArray PlainPath(const QString& path) {
    return QFile::encodeName(path.startsWith(u'/') ? path : QLatin1StringView("./") + path);
}

/// SQLite keeps the journal beside the file that a link leads to.
QByteArray WithoutLink(const QByteArray& path) {
    char target[PATH_MAX];
    struct stat status {};
    const bool isLink = ::lstat(path.constData(), &status) == 0 && S_ISLNK(status.st_mode);
    return isLink && ::realpath(path.constData(), target) != nullptr ? QByteArray(target) : path;
}

/// False when the path is taken or the file cannot be created.
bool CreateFile(const QByteArray& path) {
    constexpr mode_t kMode = 0644;  // as SQLite's own
    const int file = ::open(path.constData(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, kMode);
    return file >= 0 && ::close(file) == 0;
}
}  // namespace

CSqliteFile::~CSqliteFile() {
    (void)Close();  // a destructor cannot report a failure
}

EPlatformError CSqliteFile::Open(const QString& path, quint32 version) {
    m_version = version;
    const QByteArray given = PlainPath(path);
    m_path = WithoutLink(given);
    m_keptJournal.clear();
    m_created = CreateFile(m_path) ? StampOf(m_path) : std::nullopt;
    EPlatformError error = m_lock.Take(m_path);
    if (error == kErrorSuccess) {
        error = OpenConnection();
    }
    if (error == kErrorSuccess) {
        error = LockAndCheck();
    }
    if (error == kErrorSuccess && !m_lock.IsHeld()) {
        error = m_lock.Take(m_path);  // SQLite has created the file that a link led to
    }
    if (error == kErrorSuccess) {
        error = Execute(kSettings);
    }
    if (error == kErrorSuccess) {
        // A link that leads elsewhere from now on replaces the volume.
        m_watch.Attach(OwnFile(), given);
    }
    if (error != kErrorSuccess) {
        Rollback();
        // Another program that uses the file may have begun to fill it.
        if (error != kErrorSharingViolation) {
            RemoveCreated();
        }
        (void)Close();  // The first failure is the one to report.
    }
    return error;
}

void CSqliteFile::RemoveCreated() {
    const std::optional<CFileStamp> now = StampOf(m_path);
    if (m_created && now && now->IsSameFile(*m_created)) {
        // Stop watching: it is us who remove the file, and its journal goes when it is closed.
        (void)m_watch.Detach();
        ::unlink(m_path.constData());
    }
}

EPlatformError CSqliteFile::OpenConnection() {
    const int result =
        sqlite3_open_v2(m_path.constData(), &m_connection,
                        SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
    if (result != SQLITE_OK) {
        return ErrorOf(result);
    }
    if (sqlite3_db_readonly(m_connection, "main") == 1) {
        return kErrorAccessDenied;
    }
    sqlite3_extended_result_codes(m_connection, 1);
    // A file from elsewhere may contain triggers and views.
    sqlite3_db_config(m_connection, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    for (const int feature : {SQLITE_DBCONFIG_TRUSTED_SCHEMA, SQLITE_DBCONFIG_ENABLE_TRIGGER,
                              SQLITE_DBCONFIG_ENABLE_VIEW}) {
        sqlite3_db_config(m_connection, feature, 0, nullptr);
    }
    return kErrorSuccess;
}

// The header is checked before SQLite touches the file and again under the lock, after a journal
// left by a killed process has been played back. Only an interrupted creation of a volume leaves a
// blank header, and only an interrupted write half a page at the end; both leave their journal too.
EPlatformError CSqliteFile::LockAndCheck() {
    bool isEmpty = false;
    EPlatformError error = CheckHeader(HasJournal(m_path), isEmpty);
    if (error == kErrorSuccess) {
        error = AdmitJournal();
    }
    if (error == kErrorSuccess) {
        // The page size affects only a new file: see kBlockCapacity.
        error = Execute("PRAGMA page_size=8192; PRAGMA locking_mode=EXCLUSIVE; BEGIN EXCLUSIVE;");
    }
    if (error == kErrorSuccess) {
        error = CheckHeader(false, isEmpty);
    }
    if (error == kErrorSuccess && isEmpty) {
        error = Execute(kSchema);
    } else if (error == kErrorSuccess && !WalkTrees().Ends(kSchemaPage)) {
        error = kErrorCorrupt;  // the list of tables, which SQLite reads before anything else
    }
    return error == kErrorSuccess ? Commit() : error;
}

// The shared lock keeps writers out from this check of the journal until SQLite has made its own;
// SQLite finds the lock already taken and keeps it.
EPlatformError CSqliteFile::AdmitJournal() {
    sqlite3_file* file = OwnFile();
    int isWriting = 0;
    sqlite3_int64 size = 0;
    int result = file->pMethods->xLock(file, SQLITE_LOCK_SHARED);
    if (result == SQLITE_OK) {
        result = file->pMethods->xCheckReservedLock(file, &isWriting);
    }
    if (result == SQLITE_OK) {
        result = isWriting != 0 ? SQLITE_BUSY : file->pMethods->xFileSize(file, &size);
    }
    if (result != SQLITE_OK) {
        return ErrorOf(result);
    }
    const CJournalCheck check(
        m_path + kJournalSuffix.data(), size,
        [this](qint64 offset, qint64 bytes) { return ReadRaw(offset, bytes); });
    return check.MayBePlayed() ? kErrorSuccess : check.SetAside(m_keptJournal);
}

// SQLite's own descriptor: closing a second one of the same file would drop this process's locks.
sqlite3_file* CSqliteFile::OwnFile() const {
    sqlite3_file* file = nullptr;
    sqlite3_file_control(m_connection, "main", SQLITE_FCNTL_FILE_POINTER, &file);
    return file;
}

QByteArray CSqliteFile::ReadRaw(qint64 offset, qint64 size) const {
    sqlite3_file* file = OwnFile();
    sqlite3_int64 fileSize = 0;
    file->pMethods->xFileSize(file, &fileSize);
    QByteArray bytes(std::clamp<qint64>(fileSize - offset, 0, size), Qt::Uninitialized);
    const int result =
        file->pMethods->xRead(file, bytes.data(), static_cast<int>(bytes.size()), offset);
    return result == SQLITE_OK ? bytes : QByteArray();
}

QString CSqliteFile::GetKeptJournal() const {
    return QFile::decodeName(m_keptJournal);
}

EPlatformError CSqliteFile::CheckHeader(bool hasJournal, bool& isEmpty) const {
    sqlite3_file* file = OwnFile();
    sqlite3_int64 size = 0;
    int result = file->pMethods->xFileSize(file, &size);
    // SQLite reports the size of a one-byte file as 0.
    uchar first = 0;
    isEmpty = size == 0 && file->pMethods->xRead(file, &first, 1, 0) != SQLITE_OK;
    if (result != SQLITE_OK || isEmpty) {
        return ErrorOf(result);
    }
    VolumeHeader header{};
    result = file->pMethods->xRead(file, header.data(), kVolumeHeaderSize, 0);
    if (result != SQLITE_OK && result != SQLITE_IOERR_SHORT_READ) {
        return ErrorOf(result);
    }
    if (IsBlank(header) && hasJournal) {
        return kErrorSuccess;
    }
    const EPlatformError error = JudgeHeader(header, size, {kVolumeApplicationId, m_version});
    const bool hasOurPages =
        PageSizeIn(header) == kVolumePageSize && (hasJournal || size % kVolumePageSize == 0);
    return error == kErrorSuccess && !hasOurPages ? kErrorCorrupt : error;
}

EPlatformError CSqliteFile::Close() {
    // When the file at the path is no longer ours, the journal there may not be ours either.
    if (m_watch.Detach() != EVolumeState::Sound) {
        (void)Execute("PRAGMA journal_mode=PERSIST");  // a failure leaves the mode as it is
    }
    const int result = sqlite3_close(m_connection);
    if (result == SQLITE_OK) {
        m_connection = nullptr;
        m_lock.Release();  // not before SQLite has closed the file, whose lock goes with it
    }
    return PlatformErrorOf(result);
}

EPlatformError CSqliteFile::CheckPlace() {
    return m_watch.Look() == EVolumeState::Sound ? kErrorSuccess : kErrorFileInvalid;
}

EPlatformError CSqliteFile::CopyTo(const QString& path, const CopyProgress& progress) {
    constexpr int kPages = 256;  // at a time: 2 MB
    sqlite3* copy = nullptr;
    bool isCancelled = false;
    int result = sqlite3_open_v2(PlainPath(path).constData(), &copy,
                                 SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    if (result == SQLITE_OK) {
        sqlite3_backup* backup = sqlite3_backup_init(copy, "main", m_connection, "main");
        if (backup == nullptr) {
            result = sqlite3_errcode(copy);
        } else {
            for (int step = SQLITE_OK; step == SQLITE_OK && !isCancelled;) {
                step = sqlite3_backup_step(backup, kPages);
                const int total = sqlite3_backup_pagecount(backup);
                isCancelled =
                    progress && !progress(total - sqlite3_backup_remaining(backup), total);
            }
            result = sqlite3_backup_finish(backup);
        }
    }
    sqlite3_close(copy);
    return isCancelled ? kErrorOperationAborted : ErrorOf(result);
}

CTreeWalk CSqliteFile::WalkTrees() const {
    sqlite3_file* file = OwnFile();
    sqlite3_int64 size = 0;
    file->pMethods->xFileSize(file, &size);
    return {[this](qint64 offset, qint64 bytes) { return ReadRaw(offset, bytes); },
            size / kVolumePageSize};
}

EPlatformError CSqliteFile::CheckTrees(std::vector<QString>& endless) {
    endless.clear();
    CStatement list;
    if (const EPlatformError error =
            list.Prepare(*this, "SELECT name, rootpage FROM sqlite_schema WHERE rootpage>0");
        error != kErrorSuccess) {
        return error;
    }
    CTreeWalk walk = WalkTrees();
    (void)walk.Ends(kSchemaPage);  // known since the file was opened; no other tree may lead there
    list.Start({});
    while (list.Next()) {
        if (!walk.Ends(static_cast<quint32>(list.GetInteger(1)))) {
            endless.push_back(list.GetText(0));
        }
    }
    return list.Finish();
}

EPlatformError CSqliteFile::CheckIntegrity(const CopyProgress& progress) {
    const CWatchedWork work(*this, progress);
    std::vector<QString> endless;
    if (const EPlatformError error = CheckTrees(endless);
        error != kErrorSuccess || !endless.empty()) {
        return error == kErrorSuccess ? kErrorCorrupt : error;
    }
    CStatement check;
    if (const EPlatformError error = check.Prepare(*this, "PRAGMA integrity_check(1)");
        error != kErrorSuccess) {
        return error;
    }
    check.Start({});
    const bool isSound = check.Next() && check.GetText(0) == QLatin1StringView("ok");
    const EPlatformError error = check.Finish();
    return error == kErrorSuccess && !isSound ? kErrorCorrupt : error;
}

void CSqliteFile::SetPulse(std::function<bool()> pulse) {
    constexpr int kSteps = 100'000;  // of SQLite's machine: some milliseconds
    m_pulse = std::move(pulse);
    const auto call = [](void* file) { return static_cast<CSqliteFile*>(file)->m_pulse() ? 0 : 1; };
    sqlite3_progress_handler(m_connection, kSteps, m_pulse ? +call : nullptr, this);
}

EPlatformError CSqliteFile::Begin() {
    return Execute("BEGIN");
}

EPlatformError CSqliteFile::Commit() {
    return Execute("COMMIT");
}

void CSqliteFile::Rollback() {
    if (m_connection != nullptr && sqlite3_get_autocommit(m_connection) == 0) {
        // A failed rollback leaves its journal, which is played back when the file is next used.
        (void)Execute("ROLLBACK");
    }
}

EPlatformError CSqliteFile::Execute(const char* sql) {
    return ErrorOf(sqlite3_exec(m_connection, sql, nullptr, nullptr, nullptr));
}

EPlatformError CSqliteFile::ListTables(QStringView prefix, std::vector<QString>& names) {
    names.clear();
    if (!IsOpen()) {
        return kErrorInvalidParameter;
    }
    CStatement find;
    if (const EPlatformError error =
            find.Prepare(*this, "SELECT name FROM sqlite_schema WHERE type='table'");
        error != kErrorSuccess) {
        return error;
    }
    find.Start({});
    while (find.Next()) {
        if (const QString name = find.GetText(0); name.startsWith(prefix)) {
            names.push_back(name);
        }
    }
    return find.Finish();
}

EPlatformError CSqliteFile::Prepare(const char* sql, sqlite3_stmt*& statement) {
    return ErrorOf(
        sqlite3_prepare_v3(m_connection, sql, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr));
}

EPlatformError CSqliteFile::ErrorOf(int sqliteResult) const {
    const EPlatformError error = PlatformErrorOf(sqliteResult);
    // SQLite reports a full disk for ENOSPC only; to a user a quota or a limit is the same. It does
    // not keep the system's error number of every failure, but errno still holds the last one.
    const bool isFull = error == kErrorInputOutput && (errno == EDQUOT || errno == EFBIG);
    if (error != kErrorSuccess && GetState() == EVolumeState::Overwritten) {
        return kErrorFileInvalid;
    }
    return isFull ? kErrorDiskFull : error;
}

qint64 CSqliteFile::GetLastRowId() const {
    return sqlite3_last_insert_rowid(m_connection);
}

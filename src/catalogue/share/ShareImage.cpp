#include "catalogue/share/ShareImage.h"

#include <algorithm>

#include "catalogue/share/ShareFormat.h"

namespace {
/// Steps of SQLite's machine between two looks at the work left. A file at every limit takes fewer
/// than half of all.
constexpr int kStepsPerLook = 10'000;
constexpr int kMostLooks = 20'000;

/// Two pictures of 4 MB, or the longest instructions, and what else is in a record.
constexpr int kLongestValue = 9 << 20;

struct CLimit {
    int id;
    int most;
};
/// Far above what our own statements and tables need.
constexpr CLimit kLimits[] = {
    {SQLITE_LIMIT_LENGTH, kLongestValue},
    {SQLITE_LIMIT_SQL_LENGTH, 1000},
    {SQLITE_LIMIT_COLUMN, 16},
    {SQLITE_LIMIT_EXPR_DEPTH, 16},
    {SQLITE_LIMIT_VDBE_OP, 10'000},
    {SQLITE_LIMIT_FUNCTION_ARG, 8},
    {SQLITE_LIMIT_ATTACHED, 0},
    {SQLITE_LIMIT_TRIGGER_DEPTH, 0},
};

/// A field of the first page that has one value only in every share file. Numbers are big-endian.
struct CFixedField {
    int offset;
    int bytes;
    quint32 value;
};
constexpr CFixedField kFixedFields[] = {
    {20, 1, 0},                    // bytes kept free in each page
    {32, 4, 0},                    // the first free page
    {36, 4, 0},                    // free pages
    {48, 4, 0},                    // pages that SQLite should keep in memory
    {52, 4, 0},                    // a root page, for a file that can be vacuumed in part
    {56, 4, 1},                    // texts are UTF-8
    {64, 4, 0},                    // as 52
    {kVolumeHeaderSize, 1, 0x0D},  // the list of tables is one page
    {kVolumeHeaderSize + 3, 2, static_cast<quint32>(kShareTables.size())},
};
constexpr int kPageCountAt = 28;
constexpr int kSmallestPage = 512;

quint32 NumberAt(QByteArrayView bytes, int offset, int count) {
    quint32 number = 0;
    for (const char byte : bytes.sliced(offset, count)) {
        number = number << 8U | static_cast<uchar>(byte);
    }
    return number;
}

/// Checks made before SQLite sees the file. SQLite reads the list of tables by itself before any
/// check of ours, so that list must be small and in its place.
EPlatformError JudgeBytes(QByteArrayView bytes) {
    VolumeHeader header{};
    std::ranges::copy(bytes.first(std::min<qsizetype>(bytes.size(), kVolumeHeaderSize)),
                      header.begin());
    const EPlatformError error = JudgeHeader(header, bytes.size(), kShareFileKind);
    if (error != kErrorSuccess) {
        return error;
    }
    const int pageSize = PageSizeIn(header);
    if (pageSize < kSmallestPage || bytes.size() % pageSize != 0 ||
        NumberAt(bytes, kPageCountAt, 4) != bytes.size() / pageSize) {
        return kErrorCorrupt;
    }
    const bool isOurs = std::ranges::all_of(kFixedFields, [bytes](const CFixedField& field) {
        return NumberAt(bytes, field.offset, field.bytes) == field.value;
    });
    return isOurs ? kErrorSuccess : kErrorCorrupt;
}

int CountWork(void* work) {
    return --*static_cast<int*>(work) < 0 ? 1 : 0;
}
}  // namespace

CShareImage::~CShareImage() {
    sqlite3_close(m_connection);
}

EPlatformError CShareImage::Connect() {
    const int result = sqlite3_open_v2(":memory:", &m_connection,
                                       SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    return ErrorOf(result);
}

EPlatformError CShareImage::Create() {
    if (const EPlatformError error = Connect(); error != kErrorSuccess) {
        return error;
    }
    // In one piece, so that Bytes needs no copy.
    const int result =
        sqlite3_deserialize(m_connection, "main", nullptr, 0, 0,
                            SQLITE_DESERIALIZE_FREEONCLOSE | SQLITE_DESERIALIZE_RESIZEABLE);
    if (result != SQLITE_OK) {
        return ErrorOf(result);
    }
    sqlite3_int64 most = kMostShareBytes;
    sqlite3_file_control(m_connection, "main", SQLITE_FCNTL_SIZE_LIMIT, &most);
    const QByteArray kind = "PRAGMA page_size=4096;PRAGMA journal_mode=OFF;PRAGMA application_id=" +
                            QByteArray::number(kShareFileKind.applicationId) +
                            ";PRAGMA user_version=" + QByteArray::number(kShareFileKind.version);
    EPlatformError error = Execute(kind.constData());
    for (const char* table : kShareTables) {
        error = error == kErrorSuccess ? Execute(table) : error;
    }
    return error;
}

QByteArrayView CShareImage::Bytes() const {
    sqlite3_int64 size = 0;
    const auto* bytes = reinterpret_cast<const char*>(
        sqlite3_serialize(m_connection, "main", &size, SQLITE_SERIALIZE_NOCOPY));
    return {bytes, bytes == nullptr ? 0 : static_cast<qsizetype>(size)};
}

EPlatformError CShareImage::Open(QByteArray bytes) {
    m_isForeign = true;
    m_bytes = std::move(bytes);
    EPlatformError error = JudgeBytes(m_bytes);
    if (error == kErrorSuccess) {
        error = Connect();
    }
    if (error == kErrorSuccess) {
        error = ErrorOf(
            sqlite3_deserialize(m_connection, "main", reinterpret_cast<uchar*>(m_bytes.data()),
                                m_bytes.size(), m_bytes.size(), SQLITE_DESERIALIZE_READONLY));
    }
    if (error == kErrorSuccess) {
        Harden();
        error = CheckTables();
    }
    return error == kErrorSuccess ? CheckPages() : error;
}

void CShareImage::Harden() {
    sqlite3_db_config(m_connection, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    for (const int feature : {SQLITE_DBCONFIG_TRUSTED_SCHEMA, SQLITE_DBCONFIG_ENABLE_TRIGGER,
                              SQLITE_DBCONFIG_ENABLE_VIEW, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION,
                              SQLITE_DBCONFIG_DQS_DDL, SQLITE_DBCONFIG_DQS_DML}) {
        sqlite3_db_config(m_connection, feature, 0, nullptr);
    }
    for (const CLimit& limit : kLimits) {
        sqlite3_limit(m_connection, limit.id, limit.most);
    }
    m_work = kMostLooks;
    sqlite3_progress_handler(m_connection, kStepsPerLook, CountWork, &m_work);
}

EPlatformError CShareImage::CheckTables() {
    // These concern the reading of pages and temporary results; the list of tables is read by the
    // statement after them.
    if (const EPlatformError error =
            Execute("PRAGMA cell_size_check=ON;PRAGMA query_only=ON;PRAGMA temp_store=MEMORY");
        error != kErrorSuccess) {
        return error;
    }
    CShareStatement list(*this, "SELECT type,sql FROM sqlite_schema ORDER BY rowid");
    for (const char* table : kShareTables) {
        if (!list.Next() || list.Text(0) != QByteArrayView("table") ||
            list.Text(1) != QByteArrayView(table)) {
            return kErrorCorrupt;
        }
    }
    return list.Next() ? kErrorCorrupt : list.GetError();
}

// SQLite's own check descends from page to page without a limit: a long enough chain of pages ends
// the program. So every row is visited before it; a cursor refuses trees deeper than 20 pages, and
// pages that are used again and again use up the work allowed.
EPlatformError CShareImage::CheckPages() {
    for (const char* visit :
         {"SELECT total(rowid) FROM contents", "SELECT total(rowid) FROM categories",
          "SELECT total(rowid) FROM items", "SELECT total(rowid) FROM components"}) {
        CShareStatement rows(*this, visit);
        if (!rows.Next()) {
            return rows.GetError();
        }
    }
    CShareStatement check(*this, "PRAGMA quick_check(1)");
    const bool isSound = check.Next() && check.Text(0) == QByteArrayView("ok");
    const EPlatformError error = check.GetError();
    return isSound || error != kErrorSuccess ? error : kErrorCorrupt;
}

EPlatformError CShareImage::Execute(const char* sql) {
    return ErrorOf(sqlite3_exec(m_connection, sql, nullptr, nullptr, nullptr));
}

/// Any failure in a foreign file counts as damage, except lack of memory.
EPlatformError CShareImage::ErrorOf(int result) const {
    const EPlatformError error = PlatformErrorOf(result);
    return m_isForeign && error != kErrorSuccess && error != kErrorNotEnoughMemory ? kErrorCorrupt
                                                                                   : error;
}

CShareStatement::CShareStatement(CShareImage& image, const char* sql) : m_image(image) {
    m_result = sqlite3_prepare_v2(image.m_connection, sql, -1, &m_statement, nullptr);
}

CShareStatement::~CShareStatement() {
    sqlite3_finalize(m_statement);
}

EPlatformError CShareStatement::Run(
    std::initializer_list<std::variant<qint64, QByteArrayView>> values) {
    if (m_statement == nullptr) {
        return GetError();
    }
    int place = 0;
    for (const auto& value : values) {
        ++place;
        if (const auto* number = std::get_if<qint64>(&value)) {
            sqlite3_bind_int64(m_statement, place, *number);
        } else {
            const auto bytes = std::get<QByteArrayView>(value);
            sqlite3_bind_blob64(m_statement, place, bytes.data(), bytes.size(), SQLITE_STATIC);
        }
    }
    m_result = sqlite3_step(m_statement);
    sqlite3_reset(m_statement);
    return GetError();
}

bool CShareStatement::Next() {
    if (m_statement != nullptr && (m_result == SQLITE_OK || m_result == SQLITE_ROW)) {
        m_result = sqlite3_step(m_statement);
    }
    return m_result == SQLITE_ROW;
}

std::optional<qint64> CShareStatement::Integer(int column) const {
    return sqlite3_column_type(m_statement, column) == SQLITE_INTEGER
               ? std::optional(sqlite3_column_int64(m_statement, column))
               : std::nullopt;
}

std::optional<QByteArrayView> CShareStatement::Blob(int column) const {
    return Bytes(column, SQLITE_BLOB);
}

std::optional<QByteArrayView> CShareStatement::Text(int column) const {
    return Bytes(column, SQLITE_TEXT);
}

std::optional<QByteArrayView> CShareStatement::Bytes(int column, int type) const {
    if (sqlite3_column_type(m_statement, column) != type) {
        return std::nullopt;
    }
    const auto* bytes = static_cast<const char*>(sqlite3_column_blob(m_statement, column));
    return QByteArrayView(bytes, sqlite3_column_bytes(m_statement, column));
}

#include "store/engine/PlatformError.h"

#include <sqlite3.h>

namespace {
struct CErrorRow {
    int sqliteResult;
    EPlatformError platformError;
};

// Primary codes; an extended code that means something else has a row above its primary code's.
constexpr CErrorRow kErrorTable[] = {
    {SQLITE_OK, kErrorSuccess},
    {SQLITE_ROW, kErrorSuccess},
    {SQLITE_DONE, kErrorSuccess},
    {SQLITE_IOERR_NOMEM, kErrorNotEnoughMemory},
    {SQLITE_IOERR_CORRUPTFS, kErrorCorrupt},
    {SQLITE_IOERR, kErrorInputOutput},
    {SQLITE_NOMEM, kErrorNotEnoughMemory},
    {SQLITE_PERM, kErrorAccessDenied},
    {SQLITE_AUTH, kErrorAccessDenied},
    {SQLITE_READONLY, kErrorAccessDenied},
    {SQLITE_CANTOPEN, kErrorAccessDenied},
    {SQLITE_BUSY, kErrorSharingViolation},
    {SQLITE_LOCKED, kErrorSharingViolation},
    {SQLITE_FULL, kErrorDiskFull},
    {SQLITE_INTERRUPT, kErrorOperationAborted},
    {SQLITE_NOTFOUND, kErrorFileNotFound},
    {SQLITE_NOTADB, kErrorBadFormat},
    {SQLITE_TOOBIG, kErrorInvalidParameter},
    {SQLITE_RANGE, kErrorInvalidParameter},
    {SQLITE_MISUSE, kErrorInvalidParameter},
    // Our statements are fixed, so these come only from tables that differ from what we created.
    {SQLITE_CORRUPT, kErrorCorrupt},
    {SQLITE_ERROR, kErrorCorrupt},
    {SQLITE_SCHEMA, kErrorCorrupt},
    {SQLITE_CONSTRAINT, kErrorCorrupt},
    {SQLITE_MISMATCH, kErrorCorrupt},
    {SQLITE_FORMAT, kErrorCorrupt},
};

constexpr int kPrimaryMask = 0xFF;
}  // namespace

EPlatformError PlatformErrorOf(int sqliteResult) {
    for (const CErrorRow& row : kErrorTable) {
        if (row.sqliteResult == sqliteResult || row.sqliteResult == (sqliteResult & kPrimaryMask)) {
            return row.platformError;
        }
    }
    return kErrorInputOutput;
}

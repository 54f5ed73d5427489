// What a step of the history has changed in one scope, as it is being recorded.
#pragma once

#include "store/engine/ChangeFeed.h"
#include "store/engine/HistoryTables.h"

/// What a row of changes takes besides the bytes of a record, about.
inline constexpr qint64 kHistoryRowBytes = 64;
/// The room that the history needs to keep records which a step deletes or overwrites: the one
/// measure for its limits.
[[nodiscard]] constexpr qint64 HistoryRoom(qint64 records, qint64 bytes) {
    return kHistoryRowBytes * records + bytes;
}

/// A value: the history returns to the one of the last commit when a unit of work fails.
struct CStepRecording {
    CHistoryStep step;
    CHistoryChange run = {.count = 0};  ///< added records that are not stored yet
    bool isRecorded = true;             ///< false once it is skipped, damaged or too large
    bool isChanged = false;             ///< since the step was stored

    /// Stores a change, or adds it to the run.
    EPlatformError Add(CHistoryTables& tables, const CRecordChange& change);
    /// Stores the run, if there is one.
    EPlatformError FlushRun(CHistoryTables& tables);

  private:
    EPlatformError AddToRun(CHistoryTables& tables, const CRecordChange& change);
    EPlatformError Append(CHistoryTables& tables, const CHistoryChange& change);
};

#include "store/engine/StepRecording.h"

#include "store/engine/Checksum.h"

#include <algorithm>
#include <utility>

namespace {
qint64 SizeOf(const CRecordState& state) {
    return state.exists ? state.body.size() : CHistoryChange::kNothing;
}
}  // namespace

EPlatformError CStepRecording::Add(CHistoryTables& tables, const CRecordChange& change) {
    isChanged = true;
    const CRecordState& before = change.before;
    const CRecordState& after = change.after;
    if (!before.exists) {
        return AddToRun(tables, change);
    }
    if (const EPlatformError error = FlushRun(tables); error != kErrorSuccess) {
        return error;
    }
    return Append(tables, {.database = change.database,
                           .record = change.record,
                           .liveBytes = SizeOf(after),
                           .liveChecksum = after.exists ? ChecksumOf(after.body) : 0,
                           .body = QByteArray::fromRawData(before.body.data(), before.body.size()),
                           .key = before.key,
                           .ordinal = before.ordinal});
}

EPlatformError CStepRecording::AddToRun(CHistoryTables& tables, const CRecordChange& change) {
    const bool isNext =
        run.count > 0 && run.database == change.database && run.record + run.count == change.record;
    if (!isNext) {
        if (const EPlatformError error = FlushRun(tables); error != kErrorSuccess) {
            return error;
        }
        run = {.database = change.database, .record = change.record, .count = 0, .liveBytes = 0};
    }
    ++run.count;
    run.liveBytes += change.after.body.size();
    run.liveChecksum = ChecksumOf(change.after.body, run.liveChecksum);
    return kErrorSuccess;
}

EPlatformError CStepRecording::FlushRun(CHistoryTables& tables) {
    const CHistoryChange stored = std::exchange(run, {.count = 0});
    return stored.count > 0 ? Append(tables, stored) : kErrorSuccess;
}

EPlatformError CStepRecording::Append(CHistoryTables& tables, const CHistoryChange& change) {
    const EPlatformError error = tables.WriteChange(step, step.changes, change);
    if (error == kErrorSuccess) {
        ++step.changes;
        step.bytes += HistoryRoom(1, change.body.size());
        step.bytesReverted += HistoryRoom(change.count, std::max<qint64>(0, change.liveBytes));
    }
    return error;
}

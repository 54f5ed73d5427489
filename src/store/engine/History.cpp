#include "store/engine/History.h"

#include <algorithm>

#include "store/engine/Checksum.h"
#include "store/engine/HistoryRevert.h"
#include "store/engine/StorageState.h"

using namespace Qt::StringLiterals;

namespace {
/// The name of what was changed outside all steps.
constexpr auto kUnnamed = "change"_L1;
/// What a row of changes takes besides its body, about.
constexpr qint64 kRowBytes = 64;

bool IsDamage(EPlatformError error) {
    return error == kErrorCorrupt || error == kErrorBadFormat;
}

qint64 SizeOf(const CRecordState& state) {
    return state.exists ? state.body.size() : CHistoryChange::kNothing;
}
}  // namespace

CHistory::CHistory(CStorageState& state) : m_state(state), m_steps(state) {}

void CHistory::Watch(qint64 database, qint64 scope, std::optional<qint64> except) {
    m_watched[database] = {scope, except};
}

bool CHistory::Watches(qint64 database) const {
    return m_watched.contains(database);
}

void CHistory::BeginStep(const QString& name) {
    if (m_depth == 0) {
        m_name = name;
    }
    ++m_depth;
}

// A step that ends within a unit of work takes the rest of the unit along.
QString CHistory::EndStep() {
    if (--m_depth > 0 || m_state.isInUnit) {
        return {};
    }
    const auto stored = std::ranges::find_if(m_committed, &COpenStep::isRecorded);
    const bool isStored = stored != m_committed.end();
    const QString name = isStored && !m_isCancelled ? stored->step.name : QString();
    if (m_isCancelled && isStored) {
        // A failure leaves a step that undoes nothing.
        (void)m_state.Write([this] { return Guard([this] { return DropCancelled(); }); });
    }
    CloseSteps();
    if (m_state.groupDepth == 0 && m_steps.IsUntidy(m_limits)) {
        (void)Tidy();  // A failure leaves it to the next step.
    }
    return name;
}

void CHistory::CloseSteps() {
    m_open.clear();
    m_committed.clear();
    m_isSkipped = false;
    m_isCancelled = false;
}

template <typename Work>
EPlatformError CHistory::Guard(Work work) {
    const EPlatformError error = work();
    if (!IsDamage(error)) {
        return error;
    }
    if (m_reverted != nullptr) {
        *m_reverted = EReverted::Damaged;
        return error;
    }
    StartAgain();
    return kErrorSuccess;
}

// What the open step did before is lost, so the rest of it is not recorded either.
void CHistory::StartAgain() {
    m_notices.isDamaged = m_notices.isDamaged || !m_isDamageNoted;
    m_isDamageNoted = true;
    m_isSkipped = m_depth > 0 || m_state.isInUnit;
    for (COpenStep& open : m_open) {
        open.isRecorded = false;
    }
    m_committed = m_open;
    m_steps.StartAgain();
}

// In the file, too, so that the damage is not met again.
void CHistory::StartAgainAtOnce() {
    StartAgain();
    if (!m_state.isInUnit && m_state.groupDepth == 0) {
        // A failure leaves it to the next step.
        (void)m_state.Write([this] { return m_steps.Create(); });
    }
}

CHistoryNotices CHistory::TakeNotices() {
    return std::exchange(m_notices, {});
}

const std::vector<CHistoryStep>& CHistory::ListSteps() {
    if (IsDamage(m_steps.Load())) {
        StartAgainAtOnce();
    }
    return m_steps.List();
}

std::optional<CHistoryStep> CHistory::NextUndo(std::optional<qint64> scope) {
    (void)ListSteps();  // reads them
    return m_steps.Next(false, scope);
}

std::optional<CHistoryStep> CHistory::NextRedo(std::optional<qint64> scope) {
    (void)ListSteps();  // reads them
    return m_steps.Next(true, scope);
}

EPlatformError CHistory::RecordChanged(const CRecordChange& change) {
    const CWatched& watched = m_watched.at(change.database);
    const CRecordState& before = change.before;
    const CRecordState& after = change.after;
    const bool isExcepted = (before.exists && before.key == watched.except) ||
                            (after.exists && after.key == watched.except);
    const bool isSame =
        before.exists && after.exists && before.key == after.key && before.body == after.body;
    if (isExcepted || isSame) {
        return kErrorSuccess;
    }
    return Guard([&] {
        COpenStep* open = nullptr;
        const EPlatformError error = Open(watched.scope, open);
        return error == kErrorSuccess && open->isRecorded ? Record(*open, change) : error;
    });
}

// Before the unit's transaction begins.
EPlatformError CHistory::UnitBegins() {
    const EPlatformError error = m_watched.empty() ? kErrorSuccess : m_steps.Load();
    if (!IsDamage(error)) {
        return error;
    }
    StartAgain();
    m_isSkipped = !m_open.empty();
    return kErrorSuccess;
}

EPlatformError CHistory::Open(qint64 scope, COpenStep*& opened) {
    const auto found =
        std::ranges::find(m_open, scope, [](const COpenStep& open) { return open.step.scope; });
    if (found != m_open.end()) {
        opened = &*found;
        return kErrorSuccess;
    }
    EPlatformError error = m_isSkipped ? kErrorSuccess : m_steps.Create();
    if (error == kErrorSuccess) {
        error = m_steps.DropIf([this, scope](const CHistoryStep& step) {
            return step.scope == scope && (step.isUndone || m_isSkipped);
        });
    }
    if (error == kErrorSuccess) {
        opened = &m_open.emplace_back();
        opened->step.id = m_steps.AllocateId();
        opened->step.scope = scope;
        opened->step.name = kUnnamed;
        opened->isRecorded = !m_isSkipped;
    }
    return error;
}

EPlatformError CHistory::Record(COpenStep& open, const CRecordChange& change) {
    open.isChanged = true;
    const CRecordState& before = change.before;
    const CRecordState& after = change.after;
    if (!before.exists) {
        return RecordAdded(open, change);
    }
    const EPlatformError error = FlushRun(open);
    if (error != kErrorSuccess) {
        return error;
    }
    return Append(open, {.database = change.database,
                         .record = change.record,
                         .liveBytes = SizeOf(after),
                         .liveChecksum = after.exists ? ChecksumOf(after.body) : 0,
                         .body = QByteArray::fromRawData(before.body.data(), before.body.size()),
                         .key = before.key,
                         .ordinal = before.ordinal});
}

EPlatformError CHistory::RecordAdded(COpenStep& open, const CRecordChange& change) {
    CHistoryChange& run = open.run;
    const bool isNext =
        run.count > 0 && run.database == change.database && run.record + run.count == change.record;
    if (!isNext) {
        if (const EPlatformError error = FlushRun(open); error != kErrorSuccess) {
            return error;
        }
        run = {.database = change.database, .record = change.record, .count = 0, .liveBytes = 0};
    }
    ++run.count;
    run.liveBytes += change.after.body.size();
    run.liveChecksum = ChecksumOf(change.after.body, run.liveChecksum);
    return kErrorSuccess;
}

EPlatformError CHistory::FlushRun(COpenStep& open) {
    const CHistoryChange run = std::exchange(open.run, {.count = 0});
    return run.count > 0 ? Append(open, run) : kErrorSuccess;
}

EPlatformError CHistory::Append(COpenStep& open, const CHistoryChange& change) {
    CHistoryStep& step = open.step;
    const EPlatformError error = m_steps.Tables().WriteChange(step, step.changes, change);
    if (error != kErrorSuccess) {
        return error;
    }
    ++step.changes;
    step.bytes += kRowBytes + change.body.size();
    step.bytesReverted += kRowBytes * change.count + std::max<qint64>(0, change.liveBytes);
    const bool isTooLarge = step.bytes > m_limits.bytes && m_reverted == nullptr;
    return isTooLarge ? StopRecording(open) : kErrorSuccess;
}

EPlatformError CHistory::StopRecording(COpenStep& open) {
    m_hasOutgrown = true;
    open.isRecorded = false;
    const qint64 scope = open.step.scope;
    const EPlatformError error = m_steps.Drop(open.step);
    return error == kErrorSuccess
               ? m_steps.DropIf([scope](const CHistoryStep& step) { return step.scope == scope; })
               : error;
}

EPlatformError CHistory::Store(COpenStep& open) {
    EPlatformError error = open.isRecorded ? FlushRun(open) : kErrorSuccess;
    if (error != kErrorSuccess || !open.isRecorded || !open.isChanged) {
        return error;
    }
    open.isChanged = false;
    if (m_depth > 0) {
        open.step.name = m_name;
    }
    return m_steps.Store(open.step, m_limits);
}

EPlatformError CHistory::DropCancelled() {
    EPlatformError error = kErrorSuccess;
    for (COpenStep& open : m_open) {
        if (error == kErrorSuccess && open.isRecorded) {
            open.isRecorded = false;
            error = m_steps.Drop(open.step);
        }
    }
    return error;
}

EPlatformError CHistory::DatabaseDeleted(qint64 database) {
    return Guard([this, database] {
        return m_steps.DropIf(
            [database](const CHistoryStep& step) { return step.scope == database; });
    });
}

EPlatformError CHistory::UnitEnds() {
    return Guard([this] {
        if (m_isCancelled) {
            return DropCancelled();
        }
        EPlatformError error = kErrorSuccess;
        for (std::size_t i = 0; error == kErrorSuccess && i < m_open.size(); ++i) {
            error = Store(m_open[i]);
        }
        return error;
    });
}

void CHistory::UnitCommitted() {
    m_notices.hasOutgrown = m_notices.hasOutgrown || m_hasOutgrown;
    m_hasOutgrown = false;
    if (m_depth > 0) {
        m_committed = m_open;
    } else {
        CloseSteps();
    }
}

void CHistory::UnitAbandoned() {
    m_steps.Forget();
    m_hasOutgrown = false;
    if (m_depth > 0) {
        m_open = m_committed;
    } else {
        CloseSteps();
    }
}

bool CHistory::IsOneWay(const CHistoryStep& step) const {
    return step.bytesReverted > m_limits.bytes;
}

bool CHistory::MayRevert(const CHistoryStep& step) {
    const std::optional<CHistoryStep> next =
        step.isUndone ? NextRedo(step.scope) : NextUndo(step.scope);
    const bool isWatched = std::ranges::any_of(
        m_watched, [&step](const auto& watched) { return watched.second.scope == step.scope; });
    return m_depth == 0 && m_state.groupDepth == 0 && isWatched && next && next->id == step.id;
}

EReverted CHistory::Revert(const CHistoryStep& step, EPlatformError& error) {
    EReverted result = EReverted::Failed;
    error = kErrorInvalidParameter;
    if (!MayRevert(step)) {
        return result;
    }
    m_reverted = &result;
    error = m_state.Write([&] { return RevertInUnit(step, result); });
    m_reverted = nullptr;
    if (result == EReverted::Damaged) {
        StartAgainAtOnce();
    } else if (result == EReverted::Done && error != kErrorSuccess) {
        result = EReverted::Failed;
    }
    return result;
}

EPlatformError CHistory::RevertInUnit(const CHistoryStep& step, EReverted& result) {
    const bool isKept = !IsOneWay(step);
    m_open.push_back({.step = {.id = step.id,
                               .scope = step.scope,
                               .name = step.name,
                               .isUndone = !step.isUndone},
                      .isRecorded = isKept,
                      .isChanged = true});
    EPlatformError error = CHistoryRevert(m_state, m_steps.Tables()).Run(step, result);
    if (error == kErrorSuccess) {
        error = m_steps.Tables().RemoveChanges(step);
    }
    if (error == kErrorSuccess && !isKept) {
        // Without this step those that would follow it cannot be redone (undone) either.
        error = m_steps.Drop(step);
        if (error == kErrorSuccess) {
            error = m_steps.DropIf([&step](const CHistoryStep& other) {
                return other.scope == step.scope && other.isUndone != step.isUndone;
            });
        }
    }
    return error;
}

EPlatformError CHistory::Clear(std::optional<qint64> scope) {
    if (ListSteps().empty() && !m_steps.HasDropped()) {
        return kErrorSuccess;
    }
    const EPlatformError error = m_state.Write([this, scope] {
        return m_steps.DropIf(
            [scope](const CHistoryStep& step) { return !scope || step.scope == *scope; });
    });
    return error == kErrorSuccess ? Tidy() : error;
}

EPlatformError CHistory::Tidy() {
    const EPlatformError error = m_state.Write([this] { return m_steps.Tidy(); });
    if (!IsDamage(error)) {
        return error;
    }
    StartAgainAtOnce();
    return kErrorSuccess;
}

#include "store/engine/History.h"

#include <algorithm>
#include <limits>

#include "store/engine/HistoryRevert.h"
#include "store/engine/StorageState.h"

using namespace Qt::StringLiterals;

namespace {
/// The name of what was changed outside all steps.
constexpr auto kUnnamed = "change"_L1;
/// Changes that a step may remove from the file for those before it, so that it does not stall.
constexpr qint64 kTidiedAtOnce = 10000;
constexpr qint64 kAllChanges = std::numeric_limits<qint64>::max();
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

// A step that ends within a unit of work takes the rest of the unit along, under its name.
QString CHistory::EndStep() {
    if (--m_depth > 0 || m_state.isInUnit) {
        return {};
    }
    const auto stored = std::ranges::find_if(m_committed, &CStepRecording::isRecorded);
    const bool isStored = stored != m_committed.end();
    const bool isDone = isStored && !m_isCancelled && !m_isProvisional;
    QString name = isDone ? stored->step.name : QString();
    if (m_isCancelled && isStored) {
        // A failure leaves a step that undoes nothing.
        (void)m_state.Write([this] { return Guard([this] { return DropCancelled(); }); });
    }
    CloseSteps();
    if (m_state.groupDepth == 0 && m_steps.IsUntidy(m_limits)) {
        (void)Tidy(kTidiedAtOnce);  // A failure leaves it to the next step.
    }
    return name;
}

void CHistory::CloseSteps() {
    m_open.clear();
    m_committed.clear();
    m_name.clear();
    m_isSkipped = false;
    m_isCancelled = false;
    m_isProvisional = false;
}

template <typename Work>
EPlatformError CHistory::Guard(Work work) {
    const EPlatformError error = work();
    if (!IsTableDamage(error)) {
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
    for (CStepRecording& open : m_open) {
        open.isRecorded = false;
    }
    m_committed = m_open;
    m_steps.StartAgain();
}

// In the file, too, so that the damage is not met again. A failure leaves that to the next step.
EPlatformError CHistory::StartAgainAtOnce() {
    StartAgain();
    return m_state.isInUnit || m_state.groupDepth > 0
               ? kErrorSuccess
               : m_state.Write([this] { return m_steps.Create(); });
}

CHistoryNotices CHistory::TakeNotices() {
    return std::exchange(m_notices, {});
}

EPlatformError CHistory::Load() {
    const EPlatformError error = m_steps.Load();
    if (!IsTableDamage(error)) {
        return error;
    }
    (void)StartAgainAtOnce();
    return kErrorSuccess;
}

const std::vector<CHistoryStep>& CHistory::ListSteps() {
    (void)Load();  // callers to whom a failure matters have called it
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
        CStepRecording* open = nullptr;
        EPlatformError error = Open(watched.scope, open);
        if (error != kErrorSuccess || !open->isRecorded) {
            return error;
        }
        error = open->Add(m_steps.Tables(), change);
        return error == kErrorSuccess ? StopIfTooLarge(*open) : error;
    });
}

// Before the unit's transaction begins.
EPlatformError CHistory::UnitBegins() {
    const EPlatformError error = m_steps.Load();
    if (!IsTableDamage(error)) {
        return error;
    }
    StartAgain();
    m_isSkipped = !m_open.empty();
    return kErrorSuccess;
}

EPlatformError CHistory::Open(qint64 scope, CStepRecording*& opened) {
    const auto found = std::ranges::find(
        m_open, scope, [](const CStepRecording& open) { return open.step.scope; });
    if (found != m_open.end()) {
        opened = &*found;
        return kErrorSuccess;
    }
    const auto isOfScope = [scope](const CHistoryStep& step) { return step.scope == scope; };
    const EPlatformError error = m_isSkipped ? m_steps.DropIf(isOfScope) : m_steps.Create();
    if (error == kErrorSuccess) {
        opened = &m_open.emplace_back();
        opened->step.id = m_steps.AllocateId();
        opened->step.scope = scope;
        opened->step.name = kUnnamed;
        opened->isRecorded = !m_isSkipped;
    }
    return error;
}

EPlatformError CHistory::StopIfTooLarge(CStepRecording& open) {
    const bool isTooLarge = open.step.bytes > m_limits.bytes && m_reverted == nullptr;
    return isTooLarge ? StopRecording(open) : kErrorSuccess;
}

EPlatformError CHistory::StopRecording(CStepRecording& open) {
    m_hasOutgrown = true;
    open.isRecorded = false;
    const qint64 scope = open.step.scope;
    const EPlatformError error = m_steps.Drop(open.step);
    return error == kErrorSuccess
               ? m_steps.DropIf([scope](const CHistoryStep& step) { return step.scope == scope; })
               : error;
}

EPlatformError CHistory::Store(CStepRecording& open) {
    EPlatformError error = kErrorSuccess;
    if (open.isRecorded) {
        error = open.FlushRun(m_steps.Tables());
    }
    if (error == kErrorSuccess && open.isRecorded) {
        error = StopIfTooLarge(open);
    }
    if (error != kErrorSuccess || !open.isRecorded || !open.isChanged) {
        return error;
    }
    open.isChanged = false;
    if (!m_name.isEmpty()) {
        open.step.name = m_name;
    }
    open.step.isProvisional = m_isProvisional;
    if (!m_isProvisional && m_reverted == nullptr) {
        error = DropUndone(open.step.scope);
    }
    return error == kErrorSuccess ? m_steps.Store(open.step, m_limits) : error;
}

EPlatformError CHistory::DropUndone(qint64 scope) {
    return m_steps.DropIf(
        [scope](const CHistoryStep& step) { return step.scope == scope && step.isUndone; });
}

EPlatformError CHistory::DropCancelled() {
    EPlatformError error = kErrorSuccess;
    for (CStepRecording& open : m_open) {
        if (error == kErrorSuccess && open.isRecorded) {
            open.isRecorded = false;
            error = m_steps.Drop(open.step);
        }
        if (error == kErrorSuccess) {
            error = m_steps.DropIf([&open](const CHistoryStep& step) {
                return step.scope == open.step.scope && step.isProvisional;
            });
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
    if (m_steps.Tables().Exist()) {
        m_isDamageNoted = false;  // what was noted is past
    }
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
    error = Load();
    if (error == kErrorSuccess && !MayRevert(step)) {
        error = kErrorInvalidParameter;
    }
    if (error != kErrorSuccess) {
        return result;
    }
    m_reverted = &result;
    error = m_state.Write([&] { return RevertInUnit(step, result); });
    m_reverted = nullptr;
    if (result == EReverted::Damaged) {
        (void)StartAgainAtOnce();
        m_notices.isDamaged = true;
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
    const EPlatformError error = CHistoryRevert(m_state, m_steps.Tables()).Run(step, result);
    return error == kErrorSuccess ? Guard([&] { return ReplaceReverted(step, isKept); }) : error;
}

// The changes that revert the step the other way are in the tables by now, except for the last run.
EPlatformError CHistory::ReplaceReverted(const CHistoryStep& step, bool isKept) {
    EPlatformError error = m_steps.Tables().RemoveChanges(step);
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
    std::vector<QString> former;
    EPlatformError error = Load();
    if (error == kErrorSuccess) {
        error = m_steps.Tables().FindFormer(former);
    }
    if (error != kErrorSuccess ||
        (m_steps.List().empty() && !m_steps.HasDropped() && former.empty())) {
        return error;
    }
    bool isPartLeft = !former.empty() && m_state.file.CheckIntegrity() != kErrorSuccess;
    if (isPartLeft) {
        former.clear();
    }
    error = m_state.Write([&] {
        EPlatformError result = m_steps.DropIf(
            [scope](const CHistoryStep& step) { return !scope || step.scope == *scope; });
        if (result == kErrorSuccess) {
            result = m_steps.Tidy(kAllChanges);
        }
        return result == kErrorSuccess ? m_steps.Tables().RemoveFormer(former) : result;
    });
    if (IsTableDamage(error)) {
        isPartLeft = true;  // in the tables that were in use until now
        error = StartAgainAtOnce();
    }
    m_notices.isPartLeft = isPartLeft && error == kErrorSuccess;
    return error;
}

EPlatformError CHistory::Tidy() {
    return Tidy(kAllChanges);
}

EPlatformError CHistory::Tidy(qint64 most) {
    const EPlatformError error = m_state.Write([this, most] { return m_steps.Tidy(most); });
    return IsTableDamage(error) ? StartAgainAtOnce() : error;
}

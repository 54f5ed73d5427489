// The history of a volume: what its last steps changed, so that they can be undone and redone.
//
// A step is what one command or one confirmed dialog stored, be it in one unit of work or several.
// It is recorded in the units that change the records, in tables of its own, see HistoryTables.h:
//
//                          after the step    undone
//      in the records          new            old
//      in the history          old            new
//
// Invariants:
// 1. Of every change the history keeps the side that the records do not have, and a checksum of the
//    other one. Undo and redo exchange the two, so nothing is stored twice; added records cost no
//    room until they are taken back.
// 2. Steps of different scopes share no records. Within a scope, steps are undone newest first and
//    redone in the opposite order, and a new step drops those that could be redone. A provisional
//    step drops none until it is final.
// 3. A step is undone or redone as a whole, in one unit of work, and only when every record that it
//    changed is as the step left it. Afterwards records have the identifiers and the places among
//    equal keys that they had.
// 4. The tables are created with the first step. A volume without them is complete, and a program
//    that does not know them leaves them alone; what it changes is noticed by 3.
// 5. Damage in the tables never fails a change of a record: the history starts again, empty. Any
//    other failed write, such as on a full disk, fails the unit.
#pragma once

#include <QString>
#include <optional>
#include <unordered_map>
#include <vector>

#include "store/engine/ChangeFeed.h"
#include "store/engine/HistorySteps.h"
#include "store/engine/StepRecording.h"

struct CStorageState;

/// Other scopes are identified by the databases of profiles.
inline constexpr qint64 kCatalogueScope = 0;

/// What became of an undo or redo.
enum class EReverted {
    Done,
    Changed,  ///< a record is not as the step left it; nothing was changed
    Damaged,  ///< the history was damaged and starts again; nothing was changed
    Failed,   ///< with an error; nothing was changed
};

/// What has happened for the user to be told.
struct CHistoryNotices {
    bool isDamaged = false;    ///< the history was damaged and starts again; reported once
    bool hasOutgrown = false;  ///< a step was too large to be kept
    bool isPartLeft = false;   ///< Clear could not remove a damaged part from the file
};

class CHistory : public CChangeListener {
  public:
    /// Add it to the listeners of the engine, whose state outlives it.
    explicit CHistory(CStorageState& state);

    /// Records the changes of a database from now on. `scope` is the identifier of the profile's
    /// own database for its diaries, or kCatalogueScope. Records with the key `except` are not
    /// recorded.
    void Watch(qint64 database, qint64 scope, std::optional<qint64> except = std::nullopt);
    void Unwatch(qint64 database) { m_watched.erase(database); }
    void SetLimits(const CHistoryLimits& limits) { m_limits = limits; }
    [[nodiscard]] const CHistoryLimits& GetLimits() const { return m_limits; }

    /// Opens a step. Steps nest: only the outermost counts, here and in EndStep. A step that
    /// changes nothing leaves no trace. A change outside all steps makes a step of its unit of
    /// work.
    void BeginStep(const QString& name);
    /// The name of the step that has ended and can be undone; empty when there is none.
    QString EndStep();
    [[nodiscard]] bool IsInStep() const { return m_depth > 0; }
    /// For the open step's changes from now on.
    void RenameStep(const QString& name) { m_name = name; }
    /// The open step is not recorded. It empties the scopes that it changes.
    void SkipStep() { m_isSkipped = true; }
    /// The open step takes back all its changes before it ends: nothing of it is kept, nor of
    /// provisional steps that earlier programs have left.
    void CancelStep() { m_isCancelled = true; }
    /// From the next change on, the open step is one that may be cancelled yet, or no longer.
    void SetProvisional(bool isProvisional) { m_isProvisional = isProvisional; }

    /// Reads the steps, unless that has been done. After damage the history starts again.
    EPlatformError Load();
    /// All steps, the oldest first; none when Load fails, here and below.
    const std::vector<CHistoryStep>& ListSteps();
    /// The step to undo or redo next: of one scope, or of all scopes in the order of the steps.
    std::optional<CHistoryStep> NextUndo(std::optional<qint64> scope = std::nullopt);
    std::optional<CHistoryStep> NextRedo(std::optional<qint64> scope = std::nullopt);
    /// Whether a step takes too much room to be redone (undone) after it has been undone (redone).
    [[nodiscard]] bool IsOneWay(const CHistoryStep& step) const;
    /// Undoes or redoes a step, the next one of its scope, whose databases must be watched. Not
    /// within a step or a group. `error` is set when the result is Failed.
    EReverted Revert(const CHistoryStep& step, EPlatformError& error);
    /// Removes the steps of a scope, or all steps, and what earlier damage has left, from the file.
    /// Not within a step or a group.
    EPlatformError Clear(std::optional<qint64> scope = std::nullopt);
    /// Removes what is left of steps that were dropped, as when their profile was deleted;
    /// otherwise that happens now and then. Not within a group.
    EPlatformError Tidy();

    /// Those since the last call.
    CHistoryNotices TakeNotices();

    [[nodiscard]] bool Watches(qint64 database) const override;
    EPlatformError RecordChanged(const CRecordChange& change) override;
    EPlatformError DatabaseDeleted(qint64 database) override;
    EPlatformError UnitBegins() override;
    EPlatformError UnitEnds() override;
    void UnitCommitted() override;
    void UnitAbandoned() override;

  private:
    struct CWatched {
        qint64 scope = 0;
        std::optional<qint64> except;
    };

    EPlatformError Open(qint64 scope, CStepRecording*& opened);
    EPlatformError StopIfTooLarge(CStepRecording& open);
    EPlatformError Store(CStepRecording& open);
    EPlatformError StopRecording(CStepRecording& open);
    EPlatformError DropCancelled();
    [[nodiscard]] bool MayRevert(const CHistoryStep& step);
    EPlatformError RevertInUnit(const CHistoryStep& step, EReverted& result);
    EPlatformError ReplaceReverted(const CHistoryStep& step, bool isKept);
    EPlatformError DropUndone(qint64 scope);
    EPlatformError Tidy(qint64 most);
    /// Runs `work` on the tables; damage starts the history again instead of failing.
    template <typename Work>
    EPlatformError Guard(Work work);
    void StartAgain();
    EPlatformError StartAgainAtOnce();
    void CloseSteps();

    CStorageState& m_state;
    CHistorySteps m_steps;
    CHistoryLimits m_limits;
    std::unordered_map<qint64, CWatched> m_watched;

    QString m_name;  ///< of the open step; also after its end, until its unit ends
    int m_depth = 0;
    bool m_isSkipped = false;
    bool m_isCancelled = false;
    bool m_isProvisional = false;
    EReverted* m_reverted = nullptr;  ///< of the step being undone or redone
    /// One for each scope that the open step, or the one being reverted, has changed.
    std::vector<CStepRecording> m_open;
    std::vector<CStepRecording> m_committed;  ///< m_open as it was at the last commit

    CHistoryNotices m_notices;
    bool m_hasOutgrown = false;  ///< in the unit under way
    bool m_isDamageNoted = false;
};

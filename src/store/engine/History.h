// The history of a volume: what its last steps changed, so that they can be undone and redone.
//
// A step is what one command or one confirmed dialog stored, be it in one unit of work or several.
// It is recorded in the units that change the records, in tables of its own, see HistoryTables.h.
//
//   a change of a record, live      after          undo ->      before
//   kept by the history             before                      after
//
// Invariants:
// 1. Of every change the history keeps the side that is not live, and a checksum of the other.
//    Undo and redo exchange the two; nothing is stored twice.
// 2. Steps of different scopes share no records. Within a scope, steps are undone newest first and
//    redone in the opposite order, and a new step drops those that could be redone.
// 3. A step is undone or redone as a whole in one unit of work, and only if every record that it
//    changed is as the step left it. Afterwards records have the identifiers and the places among
//    equal keys that they had.
// 4. A volume without the tables has no history. They are created with the first step; a program
//    that does not know them leaves them alone.
// 5. Damage in the tables fails no change of a record: the history starts again, empty. Any other
//    failed write, such as on a full disk, fails the unit.
#pragma once

#include <QString>
#include <optional>
#include <unordered_map>
#include <vector>

#include "store/engine/ChangeFeed.h"
#include "store/engine/HistoryTables.h"

struct CStorageState;

/// What the history keeps of each scope; beyond that the oldest steps go first.
struct CHistoryLimits {
    int steps = 100;
    qint64 bytes = qint64{64} << 20;
};

/// What an undo or redo came to.
enum class EReverted {
    Done,
    Changed,  ///< a record differs from what the step left; nothing was changed
    Damaged,  ///< the history was damaged and starts again; nothing was changed
    Failed,   ///< by the error returned with it; nothing was changed
};

class CHistory : public CChangeListener {
  public:
    /// The engine's state outlives the history, which the caller adds to the engine's listeners.
    explicit CHistory(CStorageState& state);

    /// Records the changes of a database from now on: as of `scope`, which is the identifier of the
    /// profile's database for its diaries and 0 for the catalogue. Records with the key `except`
    /// are not recorded.
    void Watch(qint64 database, qint64 scope, std::optional<qint64> except = std::nullopt);
    void Unwatch(qint64 database);
    void SetLimits(const CHistoryLimits& limits) { m_limits = limits; }
    [[nodiscard]] const CHistoryLimits& GetLimits() const { return m_limits; }

    /// Opens a step; within an open one nothing but the count of EndStep calls to come changes. A
    /// change outside any step makes a step of its unit of work. In the tables a step begins with
    /// its first change; one that changes nothing leaves no trace.
    void BeginStep(const QString& name);
    /// Applies from the next change in the open step on.
    void RenameStep(const QString& name);
    /// The open step is not recorded: its first change in a scope drops all steps of the scope.
    void SkipStep();
    /// The open step has taken back everything it did, with the changes of the next unit at the
    /// latest: nothing of it is kept.
    void CancelStep();
    void EndStep();

    /// The steps, the oldest first; none when the tables cannot be read.
    std::vector<CHistoryStep> ListSteps();
    /// The step to undo or redo next, of one scope or of all; of all, the newest undone last.
    std::optional<CHistoryStep> NextUndo(std::optional<qint64> scope = std::nullopt);
    std::optional<CHistoryStep> NextRedo(std::optional<qint64> scope = std::nullopt);
    /// Whether undoing (redoing) a step takes more room than the history has, so that it cannot be
    /// redone (undone) afterwards.
    [[nodiscard]] bool IsOneWay(const CHistoryStep& step) const;
    /// Undoes or redoes a step that is next in its scope, whose databases are watched. Not within a
    /// step or a group.
    EReverted Revert(const CHistoryStep& step, EPlatformError& error);
    /// Drops all steps of a scope, or of all scopes. A unit of work.
    EPlatformError Clear(std::optional<qint64> scope = std::nullopt);

    /// What has happened since the last call, for the user to be told.
    struct CNotices {
        bool isDamaged = false;    ///< the history was damaged and has started again
        bool hasOutgrown = false;  ///< a step was too large: it cannot be undone
    };
    CNotices TakeNotices();

    bool Watches(qint64 database) const override;
    EPlatformError RecordChanged(const CRecordChange& change) override;
    EPlatformError DatabaseDeleted(qint64 database) override;
    EPlatformError UnitEnds() override;
    void UnitCommitted() override;
    void UnitAbandoned() override;

  private:
    struct CWatched {
        qint64 scope = 0;
        std::optional<qint64> except;
    };
    /// What the open step has stored in one scope.
    struct COpenStep {
        CHistoryStep step;
        CHistoryChange run;      ///< records added one after the other, not stored yet
        bool isRecorded = true;  ///< false from the moment when it is skipped or too large
        bool isChanged = false;  ///< since its row was written
    };

    EPlatformError Load();
    COpenStep* FindOpen(qint64 scope);
    EPlatformError Open(qint64 scope, COpenStep*& opened);
    EPlatformError Record(COpenStep& open, const CRecordChange& change);
    EPlatformError AppendRun(COpenStep& open);
    EPlatformError Append(COpenStep& open, const CHistoryChange& change);
    EPlatformError StopRecording(COpenStep& open);
    EPlatformError Store(COpenStep& open);
    EPlatformError Trim(const CHistoryStep& kept);
    EPlatformError Drop(const CHistoryStep& step);
    EPlatformError DropScope(qint64 scope, std::optional<bool> undone = std::nullopt);
    /// Runs `work` on the tables. Damage starts the history again instead of failing.
    template <typename Work>
    EPlatformError Guard(Work work);
    EPlatformError StartAgain();

    CStorageState& m_state;
    CHistoryTables m_tables;
    CHistoryLimits m_limits;
    std::unordered_map<qint64, CWatched> m_watched;
    bool m_isLoaded = false;
    std::vector<CHistoryStep> m_steps;  ///< as in the tables, once loaded
    QString m_name;                     ///< of the open step
    int m_depth = 0;                    ///< open steps, nested
    bool m_isSkipped = false;
    bool m_isCancelled = false;
    std::vector<COpenStep> m_open;
    std::vector<COpenStep> m_committed;  ///< m_open at the last commit
    CNotices m_notices;
    CNotices m_unitNotices;  ///< of the unit under way
};

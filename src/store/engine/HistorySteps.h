// The list of the history's steps: in memory what the tables hold.
//
// A damaged page that SQLite meets within a transaction fails the whole transaction. So a unit of
// work writes only where Load has read before: it appends changes and overwrites rows of the small
// table of steps. The changes of dropped steps are removed later, by Tidy.
#pragma once

#include <optional>
#include <vector>

#include "store/engine/HistoryTables.h"

struct CStorageState;

/// What the history keeps of each scope; beyond that the oldest steps go first.
struct CHistoryLimits {
    int steps = 100;
    qint64 bytes = qint64{64} << 20;
};

/// Changes are made within the caller's unit of work. The engine's state outlives this.
class CHistorySteps {
  public:
    explicit CHistorySteps(CStorageState& state);

    /// Reads the tables, if there are any, unless that has been done. Call before a unit of work.
    EPlatformError Load();
    /// Call after a rollback and when the volume is closed.
    void Forget();
    /// Leaves the tables as they are and begins an empty list in new ones.
    void StartAgain();
    /// Creates the tables where there are none. Call after Load.
    EPlatformError Create();

    [[nodiscard]] CHistoryTables& Tables() { return m_tables; }
    /// The oldest first.
    [[nodiscard]] const std::vector<CHistoryStep>& List() const { return m_steps; }
    /// Of a scope or of all scopes: the newest step that is not undone, or the oldest that is.
    [[nodiscard]] std::optional<CHistoryStep> Next(bool isUndone,
                                                   std::optional<qint64> scope) const;
    /// An identifier larger than all others.
    qint64 AllocateId() { return ++m_lastId; }

    /// Adds or overwrites a step, and drops others of its scope as far as the limits demand, unless
    /// the step is provisional.
    EPlatformError Store(const CHistoryStep& step, const CHistoryLimits& limits);
    /// `step` need not be in the list.
    EPlatformError Drop(const CHistoryStep& step);
    template <typename Condition>
    EPlatformError DropIf(Condition condition) {
        EPlatformError error = kErrorSuccess;
        for (const CHistoryStep& step : std::vector(m_steps)) {
            if (error == kErrorSuccess && condition(step)) {
                error = Drop(step);
            }
        }
        return error;
    }
    [[nodiscard]] bool HasDropped() const { return !m_dropped.empty(); }
    /// Whether the dropped steps take so much room that Tidy is worth a unit of work.
    [[nodiscard]] bool IsUntidy(const CHistoryLimits& limits) const;
    /// Removes dropped steps, at most `most` of their changes.
    EPlatformError Tidy(qint64 most);

  private:
    EPlatformError Trim(const CHistoryStep& kept, const CHistoryLimits& limits);

    CStorageState& m_state;
    CHistoryTables m_tables;
    bool m_isLoaded = false;
    std::vector<CHistoryStep> m_steps;
    std::vector<CHistoryStep> m_dropped;  ///< their changes are still in the tables
    qint64 m_lastId = 0;
};

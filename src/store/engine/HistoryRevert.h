// Puts back what the changes of a step replaced, last change first.
#pragma once

#include "store/engine/HistoryTables.h"
#include "store/engine/StorageState.h"

enum class EReverted;

/// Runs within a unit of work, which the caller abandons after any failure. The state and the
/// tables outlive it.
class CHistoryRevert {
  public:
    CHistoryRevert(CStorageState& state, CHistoryTables& tables)
        : m_state(state), m_tables(tables) {}

    /// `result` says what the failure means: see EReverted.
    EPlatformError Run(const CHistoryStep& step, EReverted& result);

  private:
    EPlatformError Revert(const CHistoryChange& change, bool& isChanged);
    /// Compares the records with what the change left.
    EPlatformError Compare(const CHistoryChange& change, bool& isChanged);
    EPlatformError RemoveAdded(const CHistoryChange& change, CStorageState::COpenDatabase& opened,
                               bool& isChanged);

    CStorageState& m_state;
    CHistoryTables& m_tables;
};

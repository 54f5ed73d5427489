// Row identifiers that are never reused. SQLite on its own reuses the largest one when its row is
// deleted.
#pragma once

#include "store/engine/Statement.h"

struct CStorageState;

/// The identifiers of one table. When the row with the largest one is deleted, that number is kept
/// as a named value of the volume (owner 0); otherwise SQLite's own numbering is used. The engine's
/// state outlives this.
class CIdAllocator {
  public:
    /// `largestSql` selects the largest identifier in use, `name` is that of the kept value.
    CIdAllocator(CStorageState& state, const char* largestSql, const char* name)
        : m_state(state), m_largestSql(largestSql), m_name(name) {}

    /// Call within the change that adds a row. `id` is the identifier to insert it with, or 0 to
    /// let SQLite choose.
    EPlatformError Allocate(qint64& id);
    /// Call within the change that removes a row, before it is removed.
    EPlatformError KeepBeforeRemoving(qint64 id);
    /// Call after a rollback and when the file is closed.
    void Forget();

  private:
    EPlatformError Load();
    EPlatformError ReadLargest(qint64& largest);

    CStorageState& m_state;
    const char* m_largestSql;
    const char* m_name;
    CStatement m_largest;
    bool m_isLoaded = false;
    qint64 m_kept = 0;             ///< 0: none
    bool m_isKeptLargest = false;  ///< no row has an identifier as large as the kept one
};

// The identity row of the open volume, and its turn from one unit of work to the next.
#pragma once

#include "store/engine/SqliteFile.h"
#include "store/engine/VolumeIdentity.h"

/// Operations return platform error numbers.
class CVolumeGeneration {
  public:
    explicit CVolumeGeneration(CSqliteFile& file) : m_file(file) {}

    /// Reads the row. A volume of an older program has none, and neither has a new one.
    EPlatformError Load();
    void Release();
    /// False when the file holds another row than we left there.
    [[nodiscard]] bool IsInPlace();
    /// Begins a unit of work: to be called before its first change, so that the row's page comes
    /// first in the journal. A volume without a row gets one, in a transaction before that of the
    /// unit, so that the unit's own journal is tied to it.
    EPlatformError Begin();
    /// The unit is durable.
    void Confirm();

  private:
    EPlatformError CreateRow();
    EPlatformError FindPage();

    CSqliteFile& m_file;
    CStatement m_update;
    std::optional<CVolumeIdentity> m_stored;
    CVolumeIdentity m_next;  ///< of the unit under way
    qint64 m_page = 0;       ///< where the row's page begins in the file
    qint64 m_place = 0;      ///< where the row was found last
};

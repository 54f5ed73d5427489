// The identity row of the open volume, which every unit of work advances by one generation.
#pragma once

#include "store/engine/Statement.h"
#include "store/engine/VolumeIdentity.h"

class CVolumeGeneration {
  public:
    explicit CVolumeGeneration(CSqliteFile& file) : m_file(file) {}

    /// Reads the row. A new volume has none, nor has one that only an older program has written.
    EPlatformError Load();
    void Release();
    /// False when the row in the file is not the one that we left there.
    [[nodiscard]] bool IsInPlace();
    /// The random number of the generation that is in the file; nothing without a row.
    [[nodiscard]] std::optional<quint64> GetNonce() const;
    /// That of the unit under way.
    [[nodiscard]] quint64 GetNextNonce() const { return m_next.nonce; }
    /// Begins a unit of work. Call before its first change, so that the row's page comes first in
    /// the journal. The first unit after opening is preceded by a transaction of its own: it
    /// creates a missing row, or sets this program's generations apart from those of a copy.
    EPlatformError Begin();
    /// Makes the unit durable. Fails only when it is not in the file.
    EPlatformError Commit();

  private:
    EPlatformError CreateRow();
    EPlatformError Part();
    EPlatformError Advance();
    /// After a failed commit, which it rolls back as far as that is possible.
    bool IsUnitInFile();
    EPlatformError FindPage();
    EPlatformError ReadRow(std::optional<CVolumeIdentity>& row);

    CSqliteFile& m_file;
    CStatement m_update;
    std::optional<CVolumeIdentity> m_stored;
    CVolumeIdentity m_next;  ///< of the unit under way
    bool m_isParted = false;
    qint64 m_page = 0;  ///< where the row's page begins in the file
};

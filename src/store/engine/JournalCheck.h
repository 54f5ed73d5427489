// Whether a journal that a killed program left belongs to the volume beside it. SQLite plays
// whatever it finds there, also into a back-up put in the volume's place.
#pragma once

#include <QByteArray>
#include <functional>

#include "store/engine/PlatformError.h"

/// Reads the volume's bytes as they are on the disk; fewer than `size` at its end.
using VolumeReader = std::function<QByteArray(qint64 offset, qint64 size)>;

/// The volume must be locked against writers, or the journal may be that of a running program.
///
/// Every unit of work first changes the page of the volume's identity, so that page as it was
/// before stands in front in the journal. It belongs if the volume's page is still that one, or
/// the next one of that unit. A journal without such a page is from a program that stored no
/// identity and counts as the volume's own.
class CJournalCheck {
  public:
    CJournalCheck(QByteArray journalPath, qint64 volumeSize, VolumeReader readVolume);

    /// True when SQLite may have what is there: no journal, one that is over, the volume's own.
    [[nodiscard]] bool MayBePlayed() const;
    /// Renames the journal to "<name>.kept-<n>" with the first free n, which comes back in `kept`.
    /// Returns a platform error number.
    EPlatformError KeepAside(QByteArray& kept) const;

  private:
    struct CHeader;
    [[nodiscard]] bool IsOfVolume(class QFile& journal, const CHeader& header) const;
    [[nodiscard]] bool IsUnfilled() const;

    QByteArray m_path;
    qint64 m_volumeSize;
    VolumeReader m_readVolume;
};

// Whether a journal left by a killed program belongs to the volume beside it. SQLite plays back any
// journal it finds, even into a backup put in the volume's place.
#pragma once

#include <QByteArray>
#include <QLatin1StringView>

#include "store/engine/PlatformError.h"
#include "store/engine/VolumeReader.h"

/// A journal has its volume's name with this at the end.
inline constexpr QLatin1StringView kJournalSuffix("-journal");

/// The volume must be locked against writers, or the journal may be that of a running program.
///
/// Every unit of work changes the page of the volume's identity first, so the journal begins with
/// the old content of that page. The journal belongs to the volume if the volume's page still holds
/// that identity or the next one, which that unit wrote. A journal without such a page is from a
/// program that stored no identity and counts as the volume's own.
class CJournalCheck {
  public:
    CJournalCheck(QByteArray journalPath, qint64 volumeSize, VolumeReader readVolume);

    /// True when SQLite may open the volume: no journal, a finished one, or the volume's own.
    [[nodiscard]] bool MayBePlayed() const;
    /// Renames the journal to "<name>.kept-<n>" with the first free n and sets `kept` to that path.
    EPlatformError SetAside(QByteArray& kept) const;

  private:
    struct CHeader;
    [[nodiscard]] bool IsOfVolume(class QFile& journal, const CHeader& header) const;
    [[nodiscard]] bool IsUnfilled() const;

    QByteArray m_path;
    qint64 m_volumeSize;
    VolumeReader m_readVolume;
};

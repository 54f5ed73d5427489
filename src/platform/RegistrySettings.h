// The five per-user values that live outside the volume.
#pragma once

#include <QString>

/// Company "Quillon", application "Velmora for PPC". -1: the placement was never saved.
struct CRegistrySettings {
    int positionX = -1;
    int positionY = -1;
    int sizeX = -1;
    int sizeY = -1;
    QString userProfileName;

    /// Absent values keep their defaults.
    static CRegistrySettings Read();
    /// Writes nothing when the stored values are the same.
    void Write() const;

    bool operator==(const CRegistrySettings&) const = default;
};

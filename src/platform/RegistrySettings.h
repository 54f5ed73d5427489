// The five per-user values that live outside the volume.
#pragma once

#include <QString>

/// Company "Quillon", application "Velmora for PPC". -1 stands for a placement never saved.
struct CRegistrySettings {
    int positionX = -1;
    int positionY = -1;
    int sizeX = -1;
    int sizeY = -1;
    QString userProfileName;

    /// Absent values keep their defaults.
    static CRegistrySettings Read();
    /// Values that stand there already are not written again.
    void Write() const;

    bool operator==(const CRegistrySettings&) const = default;
};

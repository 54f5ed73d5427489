#include "platform/VolumePlace.h"

#include <QFileInfo>
#include <QStandardPaths>

#include "platform/ShippedFiles.h"

namespace {
constexpr auto kVolumeName = "VelmoraDb.db";
}

QString VolumePathBeside(const QString& programPath) {
    const qsizetype lastSeparator = programPath.lastIndexOf(u'/');
    return programPath.left(lastSeparator + 1) + QLatin1StringView(kVolumeName);
}

QString DefaultVolumePath(const QString& programPath) {
    QString beside = VolumePathBeside(programPath);
    const QString folder = QFileInfo(beside).path();
    // The program's path is empty when it cannot be decoded.
    const bool canBeBeside = !programPath.isEmpty() && QFileInfo(folder).isWritable();
    // A link counts even if what it leads to is missing: its disk may not be mounted now.
    const bool isBeside = QFileInfo(beside).isFile() || QFileInfo(beside).isSymLink();
    if (canBeBeside && (isBeside || !IsInstalledIn(folder))) {
        return beside;
    }
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           QLatin1StringView("/velmora/") + QLatin1StringView(kVolumeName);
}

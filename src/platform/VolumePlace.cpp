#include "platform/VolumePlace.h"

#include <QFileInfo>
#include <QStandardPaths>

namespace {
constexpr auto kVolumeName = "VelmoraDb.db";
}

QString VolumePathBeside(const QString& programPath) {
    const qsizetype lastSeparator = programPath.lastIndexOf(u'/');
    return programPath.left(lastSeparator + 1) + QLatin1StringView(kVolumeName);
}

QString DefaultVolumePath(const QString& programPath) {
    QString beside = VolumePathBeside(programPath);
    // The program's path is empty when it cannot be decoded.
    if (!programPath.isEmpty() && QFileInfo(QFileInfo(beside).path()).isWritable()) {
        return beside;
    }
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           QLatin1StringView("/velmora/") + QLatin1StringView(kVolumeName);
}

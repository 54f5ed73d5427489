#include "platform/ShippedFiles.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

QString ShippedFile(const QString& name) {
    const QString program = QCoreApplication::applicationDirPath();
    for (const auto folder : {"/"_L1, "/data/"_L1, "/../data/"_L1, "/docs/"_L1, "/../docs/"_L1,
                              "/../share/velmora/"_L1}) {
        if (const QFileInfo file(program + folder + name); file.isFile()) {
            return file.canonicalFilePath();
        }
    }
    return QStandardPaths::locate(QStandardPaths::GenericDataLocation, u"velmora/"_s + name);
}

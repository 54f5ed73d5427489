#include "platform/ShippedFiles.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QStandardPaths>
#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {
/// From the program's folder to the data folder of the prefix it is installed under.
constexpr auto kPrefixData = "/../share/velmora/"_L1;
}  // namespace

QString ShippedFile(const QString& name) {
    const QString program = QCoreApplication::applicationDirPath();
    for (const auto folder :
         {"/"_L1, "/data/"_L1, "/../data/"_L1, "/docs/"_L1, "/../docs/"_L1, kPrefixData}) {
        if (const QFileInfo file(program + folder + name); file.isFile()) {
            return file.canonicalFilePath();
        }
    }
    return QStandardPaths::locate(QStandardPaths::GenericDataLocation, u"velmora/"_s + name);
}

bool IsInstalledIn(const QString& programFolder) {
    return std::ranges::any_of(std::array{kStarterFoodsName, kHelpPageName},
                               [&](QLatin1StringView name) {
                                   return QFileInfo(programFolder + kPrefixData + name).isFile();
                               });
}

#include "catalogue/StarterFoods.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

QString StarterFoodsPath() {
    const QString program = QCoreApplication::applicationDirPath();
    for (const QString& folder :
         {program + u"/data"_s, program + u"/../data"_s, u"/usr/share/velmora"_s}) {
        const QString path = folder + u"/starter-foods.csv"_s;
        if (QFileInfo(path).isFile()) {
            return QDir::cleanPath(path);
        }
    }
    return {};
}

#include "catalogue/exchange/StarterFoods.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include "catalogue/exchange/CsvExchange.h"
#include "catalogue/items/CatalogueViewSettings.h"
#include "platform/Messages.h"
#include "store/Database.h"

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

bool OfferStarterFoods(CDatabase& database) {
    const bool isEmpty = database.Catalogue().CountItems(ECatalogueKind::Foods) == 0 &&
                         database.Categories().List(ECatalogueKind::Foods).empty();
    CCatalogueViewSettings settings = CCatalogueViewSettings::Load(database, ECatalogueKind::Foods);
    if (!isEmpty || settings.starterOffered || StarterFoodsPath().isEmpty()) {
        return false;
    }
    if (AskYesNo(u"Your food catalogue is empty. Would you like to start with the foods that come "
                 "with Velmora?"_s)) {
        ImportStarterFoods(database);
        return true;
    }
    settings.starterOffered = true;
    (void)settings.Save(database, ECatalogueKind::Foods);  // A failure has shown its message.
    return false;
}

void ImportStarterFoods(CDatabase& database) {
    // The summary has said how it ended.
    (void)ImportCatalogueFile(database, ECatalogueKind::Foods, EExisting::Skip, StarterFoodsPath());
}

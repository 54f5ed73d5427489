#include "catalogue/exchange/StarterFoods.h"

#include "catalogue/exchange/CsvExchange.h"
#include "catalogue/items/CatalogueViewSettings.h"
#include "platform/Messages.h"
#include "platform/ShippedFiles.h"
#include "store/Database.h"
#include "store/Step.h"

using namespace Qt::StringLiterals;

QString StarterFoodsPath() {
    return ShippedFile(kStarterFoodsName);
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
    const CStep step(database.GetStore(), u"import of the starter foods"_s);
    // The summary has said how it ended.
    (void)ImportCatalogueFile(database, ECatalogueKind::Foods, EDuplicatePolicy::Skip,
                              StarterFoodsPath());
}

#include "catalogue/items/CatalogueViewSettings.h"

#include "catalogue/items/CatalogueKinds.h"

CCatalogueViewSettings CCatalogueViewSettings::Load(CDatabase& database, ECatalogueKind kind) {
    CCatalogueViewSettings result;
    CViewSettings stored;
    if (!database.ViewSettings(kind).Read(stored)) {
        return result;
    }
    const CSettingPlaces& places = KindOf(kind).settings;
    const auto value = [&](int place, int otherwise) {
        return place < 0 ? otherwise : int{stored.GetSetting(place)};
    };
    result.namesInTree = value(places.namesInTree, result.namesInTree) != 0;
    result.confirmServingChange =
        value(places.confirmServingChange, result.confirmServingChange) != 0;
    result.starterOffered = value(places.starterOffered, result.starterOffered) != 0;
    result.splitterPerMille =
        qBound(0, value(places.splitterPerMille, result.splitterPerMille), 1000);
    return result;
}

bool CCatalogueViewSettings::Save(CDatabase& database, ECatalogueKind kind) const {
    CViewSettings stored;
    const CSettingPlaces& places = KindOf(kind).settings;
    const auto write = [&](int place, int value) {
        if (place >= 0) {
            stored.SetSetting(place, static_cast<qint16>(value));
        }
    };
    write(places.namesInTree, namesInTree ? 1 : 0);
    write(places.splitterPerMille, splitterPerMille);
    write(places.confirmServingChange, confirmServingChange ? 1 : 0);
    write(places.starterOffered, starterOffered ? 1 : 0);
    return database.ViewSettings(kind).Save(stored);
}

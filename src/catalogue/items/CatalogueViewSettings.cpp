#include "catalogue/items/CatalogueViewSettings.h"

namespace {
/// Places of the values among the six of the record; -1 where the kind has no such value.
struct CPlaces {
    int namesInTree;
    int splitterPerMille;
    int confirmServingChange;
    int starterOffered;
};
constexpr CPlaces kFoodsPlaces = {1, 2, 0, 3};
constexpr CPlaces kExercisesPlaces = {0, 1, -1, -1};

const CPlaces& PlacesOf(ECatalogueKind kind) {
    return kind == ECatalogueKind::Exercises ? kExercisesPlaces : kFoodsPlaces;
}
}  // namespace

CCatalogueViewSettings CCatalogueViewSettings::Load(CDatabase& database, ECatalogueKind kind) {
    CCatalogueViewSettings result;
    CViewSettings stored;
    if (!database.ViewSettings(kind).Read(stored)) {
        return result;
    }
    const CPlaces& places = PlacesOf(kind);
    const auto read = [&](int place, bool& flag) {
        flag = place < 0 ? flag : stored.GetSetting(place) != 0;
    };
    read(places.namesInTree, result.namesInTree);
    read(places.confirmServingChange, result.confirmServingChange);
    read(places.starterOffered, result.starterOffered);
    result.splitterPerMille = qBound<int>(0, stored.GetSetting(places.splitterPerMille), 1000);
    return result;
}

bool CCatalogueViewSettings::Save(CDatabase& database, ECatalogueKind kind) const {
    CViewSettings stored;
    const CPlaces& places = PlacesOf(kind);
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

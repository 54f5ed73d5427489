#include "catalogue/items/CategoryItems.h"

#include <limits>

CLeftOut ForEachItemOf(
    CDatabase& database, ECatalogueKind kind, std::optional<qint32> categoryId,
    const std::function<void(int position, const QString& name, const QString& type)>& take) {
    const CCatalogueLayout& numbers = CatalogueLayoutOf(kind);
    return database.Items(kind).ReadList(
        {categoryId ? *categoryId : std::numeric_limits<qint64>::min(),
         categoryId.value_or(CViewSettings::kMarker - 1), EWrongCount::IsDamage, numbers.type + 1},
        [&](int position, PropertyList& properties) {
            take(position, TextOf(properties[numbers.name]), TextOf(properties[numbers.type]));
            return ETake::Taken;
        });
}

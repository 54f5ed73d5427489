#include "catalogue/items/CategoryItems.h"

CLeftOut ForEachItemOf(
    CDatabase& database, ECatalogueKind kind, qint32 categoryId,
    const std::function<void(int position, const QString& name, const QString& type)>& take) {
    const CCatalogueLayout& numbers = CatalogueLayoutOf(kind);
    return database.Items(kind).ReadList(
        {categoryId, categoryId, EWrongCount::IsDamage, numbers.type + 1},
        [&](int position, PropertyList& properties) {
            take(position, TextOf(properties[numbers.name]), TextOf(properties[numbers.type]));
            return ETake::Taken;
        });
}

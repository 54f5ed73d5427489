#include "catalogue/CategoryItems.h"

void ForEachItemOf(
    CDatabase& database, ECatalogueKind kind, qint32 categoryId,
    const std::function<void(int position, const QString& name, const QString& type)>& take) {
    CItemDatabaseBase& items = database.Items(kind);
    const CCatalogueLayout& numbers = CatalogueLayoutOf(kind);
    items.ForEachFrom(
        items.FirstPositionOf(categoryId),
        [&](int position, PropertyList& properties) {
            if (std::ssize(properties) != numbers.layout.Count()) {
                return !IsBehindItems(properties);
            }
            if (properties[0] != PropertyValue(categoryId)) {
                return false;
            }
            take(position, TextOf(properties[numbers.name]), TextOf(properties[numbers.type]));
            return true;
        },
        numbers.type + 1);
}

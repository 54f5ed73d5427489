#include "catalogue/FindItems.h"

#include "catalogue/CatalogueKinds.h"

namespace {
/// Upper-cased on both sides: that also folds what has no single upper-case character.
bool Holds(const PropertyValue& value, const QString& upperText) {
    const auto* text = std::get_if<QString>(&value);
    return upperText.isEmpty() || (text != nullptr && text->toUpper().contains(upperText));
}
}  // namespace

int FindNextItem(CDatabase& database, ECatalogueKind kind, const QString& name, const QString& type,
                 int first) {
    CItemDatabaseBase& items = database.Items(kind);
    const size_t propertyCount = items.GetLayout().properties.size();
    const auto nameProperty = static_cast<size_t>(KindOf(kind).nameProperty);
    const QString upperName = name.toUpper();
    const QString upperType = type.toUpper();
    int found = -1;
    items.ForEachFrom(
        first,
        [&](int position, PropertyList& properties) {
            // The settings record of the view has a layout of its own.
            if (properties.size() == propertyCount && Holds(properties[nameProperty], upperName) &&
                Holds(properties[nameProperty + 1], upperType)) {
                found = position;
            }
            return found < 0;
        },
        KindOf(kind).nameProperty + 2);
    return found;
}

#include "catalogue/share/SharedRecord.h"

#include <algorithm>
#include <cmath>

#include "catalogue/items/CatalogueKinds.h"

namespace {
// Property numbers: of a category, and of menus, recipes and components.
constexpr int kCategoryKind = 0;
constexpr int kCategoryName = 2;
constexpr int kParentId = 0;
constexpr int kItemType = 1;
constexpr int kItemId = 2;

bool Fits(const PropertyValue& value, const CPropertyDescription& property) {
    if (TypeOf(value) != property.type) {
        return false;
    }
    if (const auto* text = std::get_if<QString>(&value)) {
        return text->size() <= property.capacity;
    }
    if (const auto* number = std::get_if<double>(&value)) {
        return std::isfinite(*number);
    }
    const auto* blob = std::get_if<QByteArray>(&value);
    return blob == nullptr || blob->size() <= kLargestPictureBytes;
}

bool FitsLayout(const PropertyList& properties, const CRecordLayout& layout) {
    return std::ranges::equal(properties, layout.properties, Fits);
}

}  // namespace

bool IsShareableCategory(const PropertyList& properties) {
    return FitsLayout(properties, kCategoryLayout) &&
           std::ranges::find(CatalogueKinds(),
                             ECatalogueKind(std::get<qint16>(properties[kCategoryKind])),
                             &CCatalogueKind::code) != CatalogueKinds().end() &&
           !TextOf(properties[kCategoryName]).isEmpty();
}

bool IsShareableItem(ECatalogueKind kind, const PropertyList& properties) {
    const CCatalogueLayout& numbers = CatalogueLayoutOf(kind);
    return FitsLayout(properties, numbers.layout) && !TextOf(properties[numbers.name]).isEmpty() &&
           (!numbers.namesType || !TextOf(properties[numbers.type]).isEmpty());
}

bool IsShareableComponent(ECatalogueKind kind, const PropertyList& properties) {
    return HasComponents(kind) && IsShareableItem(kind, properties) &&
           std::ranges::find(CatalogueKinds(), KindOfComponent(properties),
                             &CCatalogueKind::itemKind) != CatalogueKinds().end();
}

EItemKind KindOfComponent(const PropertyList& component) {
    return static_cast<EItemKind>(std::get<qint32>(component[kItemType]));
}

void PlaceItem(ECatalogueKind kind, PropertyList& properties, qint32 categoryId, qint32 itemId) {
    properties[kParentId] = categoryId;
    if (HasComponents(kind)) {
        properties[kItemType] = static_cast<qint32>(*KindOf(kind).itemKind);
        properties[kItemId] = itemId;
    }
}

void PlaceComponent(PropertyList& properties, qint32 ownerId, qint32 itemId) {
    properties[kParentId] = ownerId;
    properties[kItemId] = itemId;
}

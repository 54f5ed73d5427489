#include "catalogue/share/SharedRecord.h"

#include <algorithm>

#include "catalogue/items/CatalogueKinds.h"
#include "store/records/RecordFit.h"

namespace {
// Property numbers of a category, and of items.
constexpr int kCategoryKind = 0;
constexpr int kCategoryName = 2;
constexpr int kParentId = 0;

bool IsSmallPicture(const PropertyValue& value) {
    const auto* picture = std::get_if<QByteArray>(&value);
    return picture == nullptr || picture->size() <= kLargestPictureBytes;
}
}  // namespace

bool IsShareableCategory(const PropertyList& properties) {
    return FitsLayout(properties, kCategoryLayout) &&
           std::ranges::all_of(properties, IsSmallPicture) &&
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
           (KindOfComponent(properties) == EItemKind::Food ||
            KindOfComponent(properties) == EItemKind::Recipe);
}

EItemKind KindOfComponent(const PropertyList& component) {
    return static_cast<EItemKind>(std::get<qint32>(component[kComposedKindNumber]));
}

void PlaceItem(ECatalogueKind kind, PropertyList& properties, qint32 categoryId, qint32 itemId) {
    properties[kParentId] = categoryId;
    if (HasComponents(kind)) {
        properties[kComposedKindNumber] = static_cast<qint32>(*KindOf(kind).itemKind);
        properties[kComposedIdNumber] = itemId;
    }
}

void PlaceComponent(PropertyList& properties, qint32 ownerId, qint32 itemId) {
    properties[kParentId] = ownerId;
    properties[kComposedIdNumber] = itemId;
}

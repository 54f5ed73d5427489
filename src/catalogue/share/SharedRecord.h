// Which records a share file may hold. The rule is the same when one is written and when one from a
// stranger is read, so whatever can be shared can be taken in.
#pragma once

#include "store/records/ComposedItem.h"

/// They fit their layouts; names are not empty, nor are the types of items that are identified by
/// them. The pictures of a category are not larger than a volume may hold.
bool IsShareableCategory(const PropertyList& properties);
bool IsShareableItem(ECatalogueKind kind, const PropertyList& properties);
/// `kind` is that of the menu or recipe. A component is a food or a recipe, never a menu.
bool IsShareableComponent(ECatalogueKind kind, const PropertyList& properties);
/// What such a component was made of.
EItemKind KindOfComponent(const PropertyList& component);

// What places a record in its volume, see ShareFormat.h. `properties` are those of a record that
// can be shared.
/// `itemId` is that of a menu or recipe itself.
void PlaceItem(ECatalogueKind kind, PropertyList& properties, qint32 categoryId, qint32 itemId);
/// `itemId` is that of the item the component was made of, see ComponentItemId.
void PlaceComponent(PropertyList& properties, qint32 ownerId, qint32 itemId);

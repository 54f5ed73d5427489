#include "store/ComposedItems.h"

#include <QSet>
#include <algorithm>
#include <limits>
#include <numeric>

namespace {
constexpr qint64 kLastComposedId = std::numeric_limits<qint32>::max();

// Property 2 of an item or component; 0 for a damaged record.
qint32 ItemIdOf(const PropertyList& properties) {
    const auto* id = std::ssize(properties) > kComposedIdNumber
                         ? std::get_if<qint32>(&properties[kComposedIdNumber])
                         : nullptr;
    return id != nullptr ? *id : 0;
}

qint32 ParentIdOf(const PropertyList& properties) {
    const auto* id = properties.empty() ? nullptr : std::get_if<qint32>(&properties.front());
    return id != nullptr ? *id : 0;
}

/// Identifiers of the first `count` items; nothing unless every one could be read.
std::optional<QSet<qint32>> ItemIds(CItemDatabaseBase& items, int count) {
    QSet<qint32> ids;
    int seen = 0;
    items.ForEachFrom(
        0,
        [&](int position, PropertyList& properties) {
            if (position >= count) {
                return false;
            }
            if (const qint32 id = ItemIdOf(properties); id > 0) {
                ids.insert(id);
                ++seen;
            }
            return true;
        },
        kComposedIdNumber + 1);
    return seen == count ? std::optional(ids) : std::nullopt;
}

/// The largest identifier in the records of a menus or recipes database, be it their own or that
/// of a recipe they contain. Values that only a damaged record can have are ignored.
qint32 LargestItemId(CItemDatabaseBase& items) {
    constexpr qint32 kLargestPlausible = std::numeric_limits<qint32>::max() / 2;
    qint32 largest = 0;
    items.ForEachFrom(
        0,
        [&largest](int, PropertyList& properties) {
            for (const qint32 id : {ParentIdOf(properties), ItemIdOf(properties)}) {
                largest = id <= kLargestPlausible ? std::max(largest, id) : largest;
            }
            return true;
        },
        kComposedIdNumber + 1);
    return largest;
}
}  // namespace

CItemDatabaseBase& CComposedItems::Items(ECatalogueKind kind) const {
    if (kind == ECatalogueKind::Menus) {
        return m_menus;
    }
    return m_recipes;
}

// Components that are foods have record identifiers, which may be larger; the numbers in between
// stay unused.
qint32 CComposedItems::AllocateItemId(ECatalogueKind kind) {
    qint32& last = m_lastItemIds.at(kind == ECatalogueKind::Menus ? 0 : 1);
    if (last == 0) {
        last = std::max(kFirstComposedId, LargestItemId(Items(kind)));
        if (kind == ECatalogueKind::Recipes) {
            last = std::max(last, LargestItemId(m_menus));  // menus contain recipes, too
        }
    }
    return ++last;
}

std::vector<int> CComposedItems::ComponentPositions(ECatalogueKind kind, qint32 itemId,
                                                    CLeftOut* leftOut) {
    if (itemId < kFirstComposedId) {
        return {};
    }
    const std::optional<CPositionRange> range = Items(kind).RangeBetween(itemId, itemId);
    if (!range && leftOut != nullptr) {
        leftOut->isUnknown = true;
    }
    std::vector<int> positions(static_cast<std::size_t>(range ? range->count : 0));
    std::iota(positions.begin(), positions.end(), range ? range->first : 0);
    return positions;
}

bool CComposedItems::DeleteComponents(ECatalogueKind kind, qint32 itemId) {
    if (itemId < kFirstComposedId) {
        return true;
    }
    const std::optional<CPositionRange> range = Items(kind).RangeOf(itemId);
    CRecordGroup group(m_recipes.GetStore());
    bool areDeleted = range.has_value();
    for (int left = areDeleted ? range->count : 0; areDeleted && left > 0; --left) {
        areDeleted = Items(kind).Delete(range->first + left - 1);
    }
    return group.Commit() && areDeleted;
}

bool CComposedItems::AddCopy(ECatalogueKind kind, int position, const QString& name) {
    CItemDatabaseBase& items = Items(kind);
    CComposedItem item(kind);
    if (!items.Read(position, item)) {
        return false;
    }
    // Everything is read before anything is written, so a failed read leaves no half copy.
    std::vector<CComposedItem> records = {item};
    for (const int component : ComponentPositions(kind, item.GetItemId())) {
        if (!items.Read(component, records.emplace_back(kind))) {
            return false;
        }
    }
    const qint32 itemId = AllocateItemId(kind);
    records.front().SetName(name);
    records.front().SetItemId(itemId);
    CRecordGroup group(m_recipes.GetStore());
    bool isAdded = true;
    for (CComposedItem& record : records) {
        if (&record != &records.front()) {
            record.SetParentId(itemId);
        }
        isAdded = isAdded && items.Write(kNoPosition, record);
    }
    return group.Commit() && isAdded;
}

bool CComposedItems::Delete(ECatalogueKind kind, int position) {
    CItemDatabaseBase& items = Items(kind);
    CComposedItem item(kind);
    CRecordGroup group(m_recipes.GetStore());
    // Components come after all items, so the position stays valid. A damaged item is deleted
    // without its components.
    const bool isDeleted =
        (!items.ReadQuietly(position, item) || DeleteComponents(kind, item.GetItemId())) &&
        items.Delete(position);
    if (!isDeleted) {
        group.Undo();
        return false;
    }
    if (!group.Commit()) {
        m_recipes.GetStore().ShowFailedDeletion();
        return false;
    }
    return true;
}

int CComposedItems::FindRecipe(qint32 itemId) {
    int found = kNoPosition;
    m_recipes.ForEachFrom(
        0,
        [&](int position, PropertyList& properties) {
            if (IsPastLastItem(properties)) {
                return false;
            }
            found = ItemIdOf(properties) == itemId ? position : kNoPosition;
            return found == kNoPosition;
        },
        kComposedIdNumber + 1);
    return found;
}

bool CComposedItems::RecipeContains(qint32 itemId, qint32 wantedId) {
    QSet<qint32> known = {itemId};
    std::vector<qint32> waiting = {itemId};
    while (!waiting.empty()) {
        const qint32 recipeId = waiting.back();
        waiting.pop_back();
        if (recipeId == wantedId) {
            return true;
        }
        CRecipeItem component;
        for (const int position : ComponentPositions(ECatalogueKind::Recipes, recipeId)) {
            if (m_recipes.ReadQuietly(position, component) &&
                component.GetItemKind() == EItemKind::Recipe &&
                !known.contains(component.GetItemId())) {
                known.insert(component.GetItemId());
                waiting.push_back(component.GetItemId());
            }
        }
    }
    return false;
}

int CComposedItems::FindComponent(ECatalogueKind kind, qint32 parentId, qint32 itemId) {
    CItemDatabaseBase& items = Items(kind);
    int found = kNoPosition;
    items.ForEachFrom(
        items.FirstPositionOf(parentId),
        [&](int position, PropertyList& properties) {
            if (ParentIdOf(properties) != parentId) {
                return false;
            }
            if (std::ssize(properties) == items.GetLayout().Count() &&
                properties[kComposedKindNumber] ==
                    PropertyValue(static_cast<qint32>(EItemKind::Menu)) &&
                properties[kComposedIdNumber] == PropertyValue(itemId)) {
                found = position;
            }
            return found == kNoPosition;
        },
        kComposedIdNumber + 1);
    return found;
}

// Orphans remain when the program ends while a new menu or recipe is being put together. Nothing is
// removed unless every item can be read: the components of a damaged one may still be needed.
void CComposedItems::RemoveOrphans(ECatalogueKind kind) {
    CItemDatabaseBase& items = Items(kind);
    int position = items.FirstPositionInRange(kFirstComposedId, kLastComposedId);
    if (position < 0 || items.KeyAt(position).value_or(0) < kFirstComposedId) {
        return;
    }
    const std::optional<QSet<qint32>> owners = ItemIds(items, position);
    // A failure does not stop the start; the rest is removed next time.
    CRecordGroup group(m_recipes.GetStore());
    while (owners && position >= 0) {
        const qint64 owner = items.KeyAt(position).value_or(0);
        if (owner < kFirstComposedId) {
            return;
        }
        if (!owners->contains(static_cast<qint32>(owner))) {
            const CPositionRange range = items.RangeOf(owner).value_or(CPositionRange{});
            for (int left = range.count; left > 0; --left) {
                if (!items.DeleteQuietly(range.first + left - 1)) {
                    return;
                }
            }
        }
        position = items.FirstPositionInRange(owner + 1, kLastComposedId);
    }
}

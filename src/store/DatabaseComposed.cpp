// Menus and recipes with the components that stand under them.
#include "store/Database.h"

#include <QSet>
#include <algorithm>
#include <limits>

namespace {
constexpr qint64 kLastComposedId = std::numeric_limits<qint32>::max();
constexpr int kItemIdNumber = 2;

// Property 2 of an item or component that is whole; 0 for any other.
qint32 ItemIdOf(const PropertyList& properties) {
    const auto* id = std::ssize(properties) > kItemIdNumber
                         ? std::get_if<qint32>(&properties[kItemIdNumber])
                         : nullptr;
    return id != nullptr ? *id : 0;
}

qint32 ParentIdOf(const PropertyList& properties) {
    const auto* id = properties.empty() ? nullptr : std::get_if<qint32>(&properties.front());
    return id != nullptr ? *id : 0;
}

/// Identifiers of a kind's items. `isWhole` tells whether every one could be read.
QSet<qint32> ItemIds(CItemDatabaseBase& items, int count, bool& isWhole) {
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
        kItemIdNumber + 1);
    isWhole = seen == count;
    return ids;
}

// Key of a record; -1 when it cannot be read.
qint64 KeyAt(CItemDatabaseBase& items, int position) {
    qint64 key = -1;
    items.ForEachFrom(
        position,
        [&](int found, PropertyList& properties) {
            key = found == position ? ParentIdOf(properties) : -1;
            return false;
        },
        1);
    return key;
}
}  // namespace

int CDatabase::CountItems(ECatalogueKind kind) {
    CItemDatabaseBase& items = Items(kind);
    const int behind = items.FirstPositionInRange(CViewSettings::kMarker, kLastComposedId);
    return behind >= 0 ? behind : items.Count();
}

qint32 CDatabase::AllotItemId(ECatalogueKind kind) {
    qint32& last = m_lastItemIds.at(kind == ECatalogueKind::Menus ? 0 : 1);
    if (last == 0) {
        CItemDatabaseBase& items = Items(kind);
        bool isWhole = false;
        last = kFirstComposedId;
        for (const qint32 id : ItemIds(items, CountItems(kind), isWhole)) {
            last = std::max(last, id);
        }
        // Components of an item that cannot be read still bear its identifier.
        last = std::max(last, static_cast<qint32>(KeyAt(items, items.Count() - 1)));
    }
    return ++last;
}

std::vector<int> CDatabase::ComponentPositions(ECatalogueKind kind, qint32 itemId) {
    std::vector<int> positions;
    CItemDatabaseBase& items = Items(kind);
    const int first = items.FirstPositionOf(itemId);
    if (first < 0 || itemId < kFirstComposedId) {
        return positions;
    }
    const int next = items.FirstPositionInRange(qint64{itemId} + 1, kLastComposedId);
    for (int position = first; position < (next < 0 ? items.Count() : next); ++position) {
        positions.push_back(position);
    }
    return positions;
}

bool CDatabase::DeleteComponents(ECatalogueKind kind, qint32 itemId) {
    const std::vector<int> positions = ComponentPositions(kind, itemId);
    CRecordGroup group(m_store);
    const bool areDeleted = std::all_of(positions.rbegin(), positions.rend(),
                                        [&](int position) { return Items(kind).Delete(position); });
    return group.Commit() && areDeleted;
}

bool CDatabase::AddComposedCopy(ECatalogueKind kind, int position, const QString& name) {
    CItemDatabaseBase& items = Items(kind);
    CComposedItem item(kind);
    if (!items.Read(position, item)) {
        return false;
    }
    // Everything is read before anything is written: what cannot be copied leaves no half of it.
    std::vector<CComposedItem> records = {item};
    for (const int component : ComponentPositions(kind, item.GetItemId())) {
        if (!items.Read(component, records.emplace_back(kind))) {
            return false;
        }
    }
    const qint32 itemId = AllotItemId(kind);
    records.front().SetName(name);
    records.front().SetItemId(itemId);
    CRecordGroup group(m_store);
    bool isAdded = true;
    for (CComposedItem& record : records) {
        if (&record != &records.front()) {
            record.SetParentId(itemId);
        }
        isAdded = isAdded && items.Write(kNoPosition, record);
    }
    return group.Commit() && isAdded;
}

bool CDatabase::DeleteItem(ECatalogueKind kind, int position) {
    CItemDatabaseBase& items = Items(kind);
    if (!HasComponents(kind)) {
        return items.Delete(position);
    }
    CComposedItem item(kind);
    CRecordGroup group(m_store);
    // Components stand behind all items, so the position holds. A damaged item goes alone.
    const bool isDeleted =
        (!items.ReadQuietly(position, item) || DeleteComponents(kind, item.GetItemId())) &&
        items.Delete(position);
    return group.Commit() && isDeleted;
}

int CDatabase::FindRecipeById(qint32 itemId) {
    int found = kNoPosition;
    m_recipes.ForEachFrom(
        0,
        [&](int position, PropertyList& properties) {
            if (IsBehindItems(properties)) {
                return false;
            }
            found = ItemIdOf(properties) == itemId ? position : kNoPosition;
            return found == kNoPosition;
        },
        kItemIdNumber + 1);
    return found;
}

bool CDatabase::RecipeHolds(qint32 itemId, qint32 wantedId) {
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

// Left behind when the program ends while a new menu or recipe is put together.
void CDatabase::RemoveOrphanComponents(ECatalogueKind kind) {
    CItemDatabaseBase& items = Items(kind);
    int position = items.FirstPositionInRange(kFirstComposedId, kLastComposedId);
    if (position < 0) {
        return;
    }
    bool isWhole = false;
    const QSet<qint32> owners = ItemIds(items, CountItems(kind), isWhole);
    while (isWhole && position >= 0) {
        const qint64 owner = KeyAt(items, position);
        if (owner < kFirstComposedId) {
            return;  // unreadable: better kept
        }
        if (!owners.contains(static_cast<qint32>(owner)) &&
            !DeleteComponents(kind, static_cast<qint32>(owner))) {
            return;
        }
        position = items.FirstPositionInRange(owner + 1, kLastComposedId);
    }
}

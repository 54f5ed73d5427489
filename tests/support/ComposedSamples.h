// Menus and recipes in the store.
#pragma once

#include "support/CatalogueTest.h"

/// A menu or recipe of the category, without components; its identifier, 0 on failure.
inline qint32 AddComposed(CDatabase& database, ECatalogueKind kind, qint32 categoryId,
                          const QString& name) {
    CComposedItem item(kind);
    item.SetParentId(categoryId);
    item.SetItemKind(kind == ECatalogueKind::Menus ? EItemKind::Menu : EItemKind::Recipe);
    item.SetItemId(database.Composed().AllocateItemId(kind));
    item.SetName(name);
    item.SetServingName(QStringLiteral("1 serving"));
    return database.Items(kind).Write(-1, item) ? item.GetItemId() : 0;
}

/// `itemId` is that of the recipe a recipe component stands for.
inline bool AddPart(CDatabase& database, ECatalogueKind kind, qint32 ownerId, const QString& name,
                    double energyKcal = 0, EItemKind itemKind = EItemKind::Food,
                    qint32 itemId = 0) {
    CComposedItem part(kind);
    part.SetParentId(ownerId);
    part.SetItemKind(itemKind);
    part.SetItemId(itemId);
    part.SetName(name);
    part.SetServingName(QStringLiteral("cup"));
    part.SetNutrientValue(kEnergyIndex, energyKcal);
    return database.Items(kind).Write(-1, part);
}

/// Names of the components, "Milk,Flour".
inline QString PartsOf(CDatabase& database, ECatalogueKind kind, qint32 ownerId) {
    QStringList names;
    CComposedItem part(kind);
    for (const int position : database.Composed().ComponentPositions(kind, ownerId)) {
        names.append(database.Items(kind).Read(position, part) ? part.GetName()
                                                               : QStringLiteral("?"));
    }
    return names.join(u',');
}

// Foods and file lines that the catalogue's tests share.
#pragma once

#include <QByteArray>

#include "store/Database.h"

/// A line of 78 fields. `numbers` stands for the 54 nutrient values; "7.000" by default.
inline QByteArray FoodLine(const QByteArray& category, const QByteArray& name,
                           const QByteArray& type, const QByteArray& number = "7.000",
                           const QByteArray& servings = "\"1 cup\",240.000,") {
    const QByteArray emptyServing = "\"\",0.000,";
    const auto given = servings.count(',') / 2;
    return "0000,\"" + category + "\",\"" + name + "\",\"" + type + "\"," +
           (number + ',').repeated(kNutrientCount) + servings +
           emptyServing.repeated(kServingCount - given) + "\r\n";
}

inline QByteArray FoodFile(const QByteArray& lines) {
    return "<Foods>\r\nNDB_No,Category\r\n" + lines + "<End>\r\n";
}

inline qint32 AddCategory(CDatabase& database, const QString& name) {
    CCategory category;
    category.SetKind(ECatalogueKind::Foods);
    category.SetName(name);
    return database.AddOrUpdateCategory(-1, category) ? category.GetId() : -1;
}

/// A weighed food with one serving, "1 cup" of 240 g.
inline CFoodItem MakeFood(qint32 categoryId, const QString& name, const QString& type) {
    CFoodItem food;
    food.SetCategoryId(categoryId);
    food.SetName(name);
    food.SetType(type);
    food.SetServingName(0, QStringLiteral("1 cup"));
    food.SetServingWeight(0, 240);
    return food;
}

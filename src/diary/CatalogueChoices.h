// What the lists of the "Add Food" dialog offer, read from the catalogue.
#pragma once

#include <QStringList>

#include "store/Database.h"

/// All sorted without case.
QStringList CategoryNames(CDatabase& database, ECatalogueKind kind);
/// Each name once.
QStringList NamesInCategory(CDatabase& database, ECatalogueKind kind, qint32 categoryId);
/// Each type once; menus and recipes may have none.
QStringList TypesOfName(CDatabase& database, ECatalogueKind kind, qint32 categoryId,
                        const QString& name);

/// Reads a food, or a menu or recipe as a food whose values are those of one serving. False when
/// there is no such record.
bool ReadAsFood(CDatabase& database, ECatalogueKind kind, int position, CFoodItem& food);

// The rows of the lists from which an item is picked, read from the catalogue.
#pragma once

#include <QStringList>
#include <functional>

#include "store/Database.h"

/// The lists that the fields of a dialog open.
enum class EPicker { None, Category, Name, Type };

struct CPickChoices {
    QStringList rows;
    QString refusal;  ///< why there are no rows
    QString note;     ///< about names that the rows leave out
};
/// `categoryId` is negative when none is selected; `name` is as typed. At most `capacity` names.
CPickChoices PickChoices(CDatabase& database, ECatalogueKind kind, EPicker picker,
                         qint32 categoryId, const QString& name,
                         int capacity = kCatalogueListCapacity);
/// The item name in the category that `name` refers to: the same, the same trimmed (an imported
/// name may have outer blanks, and so may a typed one), or a longer one that a diary entry has cut.
/// If there is none, `name` trimmed.
QString ResolveItemName(CDatabase& database, ECatalogueKind kind, qint32 categoryId,
                        const QString& name);
/// "Category" or "Name".
QString PickerHeader(EPicker picker);

/// All sorted without case. Records that cannot be read are added to `leftOut`, if given.
QStringList CategoryNames(CDatabase& database, ECatalogueKind kind, CLeftOut* leftOut = nullptr);
/// Each name once, the first `capacity` of them.
QStringList NamesInCategory(CDatabase& database, ECatalogueKind kind, qint32 categoryId,
                            int capacity = kNoCapacity, CLeftOut* leftOut = nullptr);
/// Each type once; menus and recipes may have none.
QStringList TypesOfName(CDatabase& database, ECatalogueKind kind, qint32 categoryId,
                        const QString& name, CLeftOut* leftOut = nullptr);

/// Reads a food, or a menu or recipe as a food whose values are those of one serving. False when
/// there is no such record; an error is shown, unless it is read quietly.
bool ReadAsFood(CDatabase& database, ECatalogueKind kind, int position, CFoodItem& food,
                bool isQuiet = false);

/// The food or recipe that a component was made of. Position and category are -1 when that no
/// longer exists or is not known. An item of another name is not it: an older program may have
/// reused the identifier of a deleted record.
struct CComponentSource {
    ECatalogueKind kind = ECatalogueKind::Foods;
    int position = kNoPosition;
    qint32 categoryId = -1;
};
/// `findRecipe` returns the position of the recipe with an identifier, or -1.
CComponentSource SourceOfComponent(CDatabase& database, const CComposedItem& component,
                                   const std::function<int(qint32 itemId)>& findRecipe);
/// Category of the food or recipe that a component was made of, or -1.
qint32 CategoryOfComponent(CDatabase& database, const CComposedItem& component);
/// The identifier by which a component refers to its catalogue item: a recipe's own identifier or a
/// food's record identifier; 0 for a negative position.
qint32 ComponentItemId(CDatabase& database, EItemKind kind, int position);

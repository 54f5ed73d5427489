#include "catalogue/items/CatalogueChoices.h"

#include "app/LeftOutText.h"
#include "catalogue/items/CatalogueKinds.h"
#include "catalogue/items/CatalogueRules.h"
#include "catalogue/items/ChosenFood.h"

#include <algorithm>

namespace {

/// The header of a picker, and its message when there is nothing to list.
struct CPickerRow {
    const char* header;
    const char* empty;
};
constexpr CPickerRow kPickers[] = {
    {"", ""},
    {"Category", "There are no categories to select."},
    {"Name", "There are no names to select."},
    {"Name", "There are no types to select."},
};

const CPickerRow& RowOf(EPicker picker) {
    return kPickers[static_cast<int>(picker)];
}

void AddTo(CLeftOut* sum, const CLeftOut& leftOut) {
    if (sum != nullptr) {
        *sum += leftOut;
    }
}

QStringList SortedOnce(QStringList texts) {
    texts.removeDuplicates();
    texts.sort(Qt::CaseInsensitive);
    return texts;
}

}  // namespace

CPickChoices PickChoices(CDatabase& database, ECatalogueKind kind, EPicker picker,
                         qint32 categoryId, const QString& name, int capacity) {
    CPickChoices choices{{}, QLatin1StringView(RowOf(picker).empty), {}};
    CLeftOut leftOut;
    CListWords words = KindOf(kind).words;
    if (picker == EPicker::Category) {
        choices.rows = CategoryNames(database, kind, &leftOut);
        words = kCategoryWords;
    } else if (categoryId < 0) {
        choices.refusal = kNoCategorySelected;
    } else if (picker == EPicker::Name) {
        choices.rows = NamesInCategory(database, kind, categoryId, capacity, &leftOut);
    } else if (picker == EPicker::Type) {
        choices.rows = TypesOfName(database, kind, categoryId,
                                   ResolveItemName(database, kind, categoryId, name), &leftOut);
    }
    choices.note = LeftOutText(leftOut, words, static_cast<int>(choices.rows.size()),
                               "Showing the first %s names.");
    return choices;
}

QString ResolveItemName(CDatabase& database, ECatalogueKind kind, qint32 categoryId,
                        const QString& name) {
    const QStringList names = NamesInCategory(database, kind, categoryId);
    const QString trimmed = name.trimmed();
    for (const QString& meant : {name, trimmed}) {
        if (names.contains(meant)) {
            return meant;
        }
    }
    const auto whole = std::ranges::find_if(
        names, [&](const QString& longer) { return longer.startsWith(trimmed); });
    // An entry cuts longer names to its capacity, or to one less.
    return trimmed.size() >= kShortText - 1 && whole != names.end() ? *whole : trimmed;
}

QString PickerHeader(EPicker picker) {
    return QLatin1StringView(RowOf(picker).header);
}

QStringList CategoryNames(CDatabase& database, ECatalogueKind kind, CLeftOut* leftOut) {
    QStringList names;
    const CCategoryEntries categories = database.Categories().ReadEntries(kind);
    for (const CCategoryEntry& category : categories.entries) {
        names.append(category.name);
    }
    AddTo(leftOut, categories.leftOut);
    return SortedOnce(names);
}

QStringList NamesInCategory(CDatabase& database, ECatalogueKind kind, qint32 categoryId,
                            int capacity, CLeftOut* leftOut) {
    QStringList names;
    if (CatalogueLayoutOf(kind).namesType) {
        const CUniqueNames unique =
            database.Catalogue().FillArrayWithUniqueNames(kind, categoryId, capacity);
        for (const CUniqueName& entry : unique.names) {
            names.append(entry.name);
        }
        AddTo(leftOut, unique.leftOut);
    } else {
        const CCategoryList list =
            database.Catalogue().FillCategoryList(kind, categoryId, capacity);
        for (const CCategoryListEntry& item : list.entries) {
            names.append(item.name);
        }
        AddTo(leftOut, list.leftOut);
    }
    return SortedOnce(names);
}

// Reads the database itself: a category may have more items than a list shows.
QStringList TypesOfName(CDatabase& database, ECatalogueKind kind, qint32 categoryId,
                        const QString& name, CLeftOut* leftOut) {
    QStringList types;
    const CCategoryList list = CCatalogueRules(database, kind).ItemsOfName(categoryId, name);
    for (const CCategoryListEntry& item : list.entries) {
        if (!item.type.isEmpty()) {
            types.append(item.type);
        }
    }
    AddTo(leftOut, list.leftOut);
    return SortedOnce(types);
}

bool ReadAsFood(CDatabase& database, ECatalogueKind kind, int position, CFoodItem& food,
                bool isQuiet) {
    CItemDatabaseBase& items = database.Items(kind);
    const auto read = [&](CItemRecord& item) {
        return isQuiet ? items.ReadQuietly(position, item) : items.Read(position, item);
    };
    if (position < 0) {
        return false;
    }
    if (!HasComponents(kind)) {
        return read(food);
    }
    CComposedItem item(kind);
    if (!read(item)) {
        return false;
    }
    food.Clear();
    food.SetCategoryId(item.GetParentId());
    food.SetName(item.GetName());
    food.SetType(item.GetType());
    food.SetNutrientValues(item.GetNutrientValues());
    const QString serving = item.GetServingName();
    food.SetServingName(0, serving.isEmpty() ? QString(kOneServing) : serving);
    return true;
}

CComponentSource SourceOfComponent(CDatabase& database, const CComposedItem& component,
                                   const std::function<int(qint32)>& findRecipe) {
    const ECatalogueKind kind = CatalogueOf(component.GetItemKind());
    const int position = component.GetItemKind() == EItemKind::Recipe
                             ? findRecipe(component.GetItemId())
                             : database.Items(kind).PositionOf(component.GetItemId());
    CCatalogueItem item(kind);
    // Components have shorter names.
    const bool isIt = position >= 0 && database.Items(kind).ReadQuietly(position, item) &&
                      item.GetName().startsWith(component.GetName());
    return isIt ? CComponentSource{kind, position, item.GetCategoryId()} : CComponentSource{kind};
}

qint32 CategoryOfComponent(CDatabase& database, const CComposedItem& component) {
    return SourceOfComponent(
               database, component,
               [&database](qint32 itemId) { return database.Composed().FindRecipe(itemId); })
        .categoryId;
}

qint32 ComponentItemId(CDatabase& database, EItemKind kind, int position) {
    if (position < 0) {
        return 0;
    }
    if (kind != EItemKind::Recipe) {
        return static_cast<qint32>(database.Items(CatalogueOf(kind)).RecordAt(position));
    }
    CRecipeItem recipe;
    return database.Recipes().ReadQuietly(position, recipe) ? recipe.GetItemId() : 0;
}

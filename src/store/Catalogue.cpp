#include "store/Catalogue.h"

#include <QSet>
#include <algorithm>
#include <array>
#include <limits>

namespace {
constexpr int kIdDigits = 10;  // of the largest identifier

// Property 0 of an item; the marker of the view settings for a record that has none.
qint32 ParentOf(const PropertyList& properties) {
    const auto* parent = properties.empty() ? nullptr : std::get_if<qint32>(&properties.front());
    return parent != nullptr ? *parent : CViewSettings::kMarker;
}

// As toCaseFolded, but without its look-up in the Unicode tables for ASCII texts.
void FoldCase(QString& text) {
    for (QChar& character : text) {
        const char16_t code = character.unicode();
        if (code >= 0x80) {
            text = text.toCaseFolded();
            return;
        }
        if (code >= u'A' && code <= u'Z') {
            character = QChar(code + (u'a' - u'A'));
        }
    }
}

// Keeps the order of equal texts. Each text is folded once.
template <typename Entry, typename ToText>
void SortWithoutCase(std::vector<Entry>& entries, ToText toText) {
    std::vector<std::pair<QString, std::size_t>> order;
    order.reserve(entries.size());
    for (const Entry& entry : entries) {
        order.emplace_back(toText(entry), order.size());
        FoldCase(order.back().first);
    }
    std::ranges::sort(order, [](const auto& left, const auto& right) {
        const int byText = left.first.compare(right.first);
        return byText != 0 ? byText < 0 : left.second < right.second;
    });
    std::vector<Entry> sorted;
    sorted.reserve(entries.size());
    for (const auto& [text, place] : order) {
        sorted.push_back(std::move(entries[place]));
    }
    entries = std::move(sorted);
}

}  // namespace

CCatalogue::CCatalogue(CRecordStore& store)
    : m_foods(store, kFoodLayout),
      m_menus(store, kMenuLayout),
      m_recipes(store, kRecipeLayout),
      m_exlib(store, kExerciseLibLayout) {}

CItemDatabaseBase& CCatalogue::Items(ECatalogueKind kind) {
    const std::array<CItemDatabaseBase*, 4> items = {&m_foods, &m_menus, &m_recipes, &m_exlib};
    return *items.at(static_cast<std::size_t>(kind));
}

int CCatalogue::CountItems(ECatalogueKind kind) {
    CItemDatabaseBase& items = Items(kind);
    const auto range =
        items.RangeBetween(std::numeric_limits<qint64>::min(), CViewSettings::kMarker - 1);
    return range ? range->count : items.Count();
}

CCategoryList CCatalogue::FillCategoryList(ECatalogueKind kind, qint32 categoryId, int capacity) {
    CCategoryList list;
    // After the last category come no items.
    if (categoryId < 0 || categoryId >= CViewSettings::kMarker) {
        return list;
    }
    const CCatalogueLayout& numbers = CatalogueLayoutOf(kind);
    list.leftOut = Items(kind).ReadList(
        {.low = categoryId,
         .high = categoryId,
         .most = numbers.type + 1,
         .lastKey = CViewSettings::kMarker - 1},
        [&](int position, PropertyList& properties) {
            list.entries.push_back({position, categoryId, TextOf(properties[numbers.name]),
                                    TextOf(properties[numbers.type])});
            return std::ssize(list.entries) < capacity ? ETake::Taken : ETake::Last;
        });
    SortByNameAndType(kind, list.entries);
    return list;
}

void SortByNameAndType(ECatalogueKind kind, std::vector<CCategoryListEntry>& entries) {
    const bool namesType = CatalogueLayoutOf(kind).namesType;
    SortWithoutCase(entries, [namesType](const CCategoryListEntry& entry) {
        // No text contains the separator, so a name sorts before longer names that begin with it.
        return namesType ? entry.name + QChar(0) + entry.type : entry.name;
    });
}

// Categories are contiguous, so a name is compared only with those of its own category, and one
// category is read without the others.
CUniqueNames CCatalogue::FillArrayWithUniqueNames(ECatalogueKind kind, qint32 categoryId,
                                                  int capacity) {
    const bool isAll = categoryId == -1;
    const CCatalogueLayout& numbers = CatalogueLayoutOf(kind);
    CUniqueNames unique;
    QSet<QString> namesOfCategory;
    unique.leftOut = Items(kind).ReadList(
        {.low = isAll ? std::numeric_limits<qint64>::min() : categoryId,
         .high = isAll ? CViewSettings::kMarker - 1 : categoryId,
         .most = numbers.name + 1,
         .messagePrefix = QString::fromLatin1(numbers.namesPrefix),
         .lastKey = CViewSettings::kMarker - 1},
        [&](int /*position*/, PropertyList& properties) {
            const qint32 parent = ParentOf(properties);
            if (!unique.names.empty() && unique.names.back().categoryId != parent) {
                namesOfCategory.clear();
            }
            const QString name = TextOf(properties[numbers.name]);
            if (namesOfCategory.contains(name)) {
                return ETake::Taken;
            }
            namesOfCategory.insert(name);
            unique.names.push_back({parent, name});
            return std::ssize(unique.names) < capacity ? ETake::Taken : ETake::Last;
        });
    SortWithoutCase(unique.names, [](const CUniqueName& entry) {
        return QString::number(entry.categoryId).rightJustified(kIdDigits, u'0') + entry.name;
    });
    return unique;
}

int CCatalogue::FindItem(ECatalogueKind kind, qint32 categoryId, const QString& name,
                         const QString& type, int except) {
    const CCatalogueLayout& numbers = CatalogueLayoutOf(kind);
    int found = kNoPosition;
    (void)Items(kind).ReadList(
        {categoryId, categoryId, EWrongCount::IsDamage, numbers.type + 1},
        [&](int position, PropertyList& properties) {
            const bool isMatch = position != except && TextOf(properties[numbers.name]) == name &&
                                 (!numbers.namesType || TextOf(properties[numbers.type]) == type);
            found = isMatch ? position : found;
            return isMatch ? ETake::Last : ETake::Taken;
        });
    return found;
}

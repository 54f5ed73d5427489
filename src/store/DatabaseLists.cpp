// The catalogue's lists, its categories, and the settings kept beside its items.
#include "platform/Messages.h"
#include "store/Database.h"

#include <QSet>
#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace {
constexpr int kIdDigits = 10;  // of the largest identifier

// Numbers of a component or composed record.
constexpr int kItemTypeNumber = 1;
constexpr int kItemIdNumber = 2;

// Property 0 of an item; the marker of the view settings for a record that has none.
qint32 ParentOf(const PropertyList& properties) {
    const auto* parent = properties.empty() ? nullptr : std::get_if<qint32>(&properties.front());
    return parent != nullptr ? *parent : CViewSettings::kMarker;
}

// As toCaseFolded, without its look into the Unicode tables for every character of a plain text.
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

// Position of the stored settings, which are read into `settings`.
int FindViewSettings(CItemDatabaseBase& items, CViewSettings& settings) {
    int found = kNoPosition;
    items.ForEachFrom(items.FirstPositionOf(CViewSettings::kMarker),
                      [&](int position, PropertyList& properties) {
                          const bool isMarked = ParentOf(properties) == CViewSettings::kMarker;
                          if (isMarked && settings.SetProperties(std::move(properties))) {
                              found = position;
                          }
                          return isMarked && found == kNoPosition;
                      });
    return found;
}
}  // namespace

CCategoryList CDatabase::FillCategoryList(ECatalogueKind kind, qint32 categoryId, int capacity) {
    CCategoryList list;
    // What stands behind the last category is no item.
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
    SortWithoutCase(list.entries, [&numbers](const CCategoryListEntry& entry) {
        // No text holds the separator, so a name stands before those that begin with it.
        return numbers.namesType ? entry.name + QChar(0) + entry.type : entry.name;
    });
    return list;
}

CUniqueNames CDatabase::FillArrayWithUniqueFoodNames(qint32 categoryId, int capacity) {
    return FillUniqueNames(ECatalogueKind::Foods, categoryId, capacity);
}

CUniqueNames CDatabase::FillArrayWithUniqueExlibNames(qint32 categoryId, int capacity) {
    return FillUniqueNames(ECatalogueKind::Exercises, categoryId, capacity);
}

// Categories are contiguous, so names need comparing only with those of their own category, and
// one category is read without the others.
CUniqueNames CDatabase::FillUniqueNames(ECatalogueKind kind, qint32 categoryId, int capacity) {
    const bool isAll = categoryId == -1;
    const CCatalogueLayout& numbers = CatalogueLayoutOf(kind);
    CUniqueNames unique;
    QSet<QString> namesOfCategory;
    unique.leftOut = Items(kind).ReadList(
        {.low = isAll ? std::numeric_limits<qint64>::min() : categoryId,
         .high = isAll ? CViewSettings::kMarker - 1 : categoryId,
         .most = numbers.name + 1,
         .messagePrefix = kind == ECatalogueKind::Foods ? u"FillArrayWithUniqueFoodNames --> "_s
                                                        : u"FillArrayWithUniqueExlibNames --> "_s,
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

int CDatabase::FindComponent(ECatalogueKind kind, qint32 parentId, qint32 itemId) {
    CItemDatabaseBase& items = Items(kind);
    int found = kNoPosition;
    items.ForEachFrom(
        items.FirstPositionOf(parentId),
        [&](int position, PropertyList& properties) {
            if (ParentOf(properties) != parentId) {
                return false;
            }
            if (std::ssize(properties) == items.GetLayout().Count() &&
                properties[kItemTypeNumber] ==
                    PropertyValue(static_cast<qint32>(EItemKind::Menu)) &&
                properties[kItemIdNumber] == PropertyValue(itemId)) {
                found = position;
            }
            return found == kNoPosition;
        },
        kItemIdNumber + 1);
    return found;
}

int CDatabase::FindItem(ECatalogueKind kind, qint32 categoryId, const QString& name,
                        const QString& type, int except) {
    const CCatalogueLayout& numbers = CatalogueLayoutOf(kind);
    int found = kNoPosition;
    Items(kind).ReadList({categoryId, categoryId, EWrongCount::IsDamage, numbers.type + 1},
                         [&](int position, PropertyList& properties) {
                             const bool isIt =
                                 position != except && TextOf(properties[numbers.name]) == name &&
                                 (!numbers.namesType || TextOf(properties[numbers.type]) == type);
                             found = isIt ? position : found;
                             return isIt ? ETake::Last : ETake::Taken;
                         });
    return found;
}

bool CDatabase::AddOrUpdateCategory(int position, CCategory& category) {
    if (position >= 0) {
        CCategory stored;
        if (m_categories.Read(position, stored)) {
            category.SetId(stored.GetId());
        }
    } else {
        qint32 largestId = 0;
        for (const CCategoryEntry& entry : ListCategories(category.GetKind())) {
            if (entry.name == category.GetName()) {
                return false;
            }
            largestId = std::max(largestId, entry.id);
        }
        if (largestId >= CViewSettings::kMarker - 1) {
            return false;  // only a damaged record numbers its category so high
        }
        category.SetId(largestId + 1);
        if (m_categories.Count() >= kMaximumCategories) {
            ShowMessage(u"Cannot add category. Maximum number of categories has been reached."_s);
            return false;
        }
    }
    // The write's own result is not looked at: callers find the category in the list or not.
    m_categories.Write(position, category);
    return true;
}

bool CDatabase::DeleteCategory(int position) {
    return m_categories.Delete(position);
}

// The pictures behind the name are not decoded.
CCategories CDatabase::ReadCategories(ECatalogueKind kind) {
    constexpr int kIdNumber = 1;
    constexpr int kNameNumber = 2;
    const auto key = static_cast<qint64>(kind);
    CCategories categories;
    categories.leftOut = m_categories.ReadList(
        {key, key, EWrongCount::IsDamage, kNameNumber + 1},
        [&](int position, PropertyList& properties) {
            const auto* id = std::get_if<qint32>(&properties[kIdNumber]);
            if (id == nullptr) {
                return ETake::Damaged;
            }
            categories.entries.push_back({position, *id, TextOf(properties[kNameNumber])});
            return ETake::Taken;
        });
    return categories;
}

std::optional<CCategoryEntry> CDatabase::FindCategoryEntry(
    ECatalogueKind kind, const std::function<bool(const CCategoryEntry&)>& isIt) {
    const std::vector<CCategoryEntry> entries = ListCategories(kind);
    const auto found = std::ranges::find_if(entries, isIt);
    return found == entries.end() ? std::nullopt : std::optional(*found);
}

int CDatabase::FindCategory(ECatalogueKind kind, const QString& name) {
    const auto found =
        FindCategoryEntry(kind, [&](const auto& entry) { return entry.name == name; });
    return found ? found->position : kNoPosition;
}

int CDatabase::FindCategory(ECatalogueKind kind, qint32 id) {
    const auto found = FindCategoryEntry(kind, [id](const auto& entry) { return entry.id == id; });
    return found ? found->position : kNoPosition;
}

qint32 CDatabase::CategoryIdOf(ECatalogueKind kind, const QString& name) {
    const auto found =
        FindCategoryEntry(kind, [&](const auto& entry) { return entry.name == name; });
    return found ? found->id : -1;
}

QString CDatabase::CategoryNameOf(ECatalogueKind kind, qint32 id) {
    const auto found = FindCategoryEntry(kind, [id](const auto& entry) { return entry.id == id; });
    return found ? found->name : QString();
}

bool CDatabase::ReadViewSettings(ECatalogueKind kind, CViewSettings& settings) {
    return FindViewSettings(Items(kind), settings) != kNoPosition;
}

bool CDatabase::SaveViewSettings(ECatalogueKind kind, const CViewSettings& settings) {
    CItemDatabaseBase& items = Items(kind);
    CViewSettings stored;
    if (items.Write(FindViewSettings(items, stored), settings)) {
        return true;
    }
    const QLatin1StringView failure = kind == ECatalogueKind::Foods
                                          ? "Cannot save foods props (error# %d)."_L1
                                          : "Cannot save exlib props (error# %d)."_L1;
    m_store.ShowFailure(FormatText(failure, {m_store.GetLastError()}));
    return false;
}

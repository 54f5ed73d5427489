#include "catalogue/tables/FoodCategories.h"

#include <algorithm>

#include "catalogue/exchange/CsvFields.h"
#include "catalogue/tables/TableFolder.h"
#include "catalogue/tables/TableTexts.h"

using namespace Qt::StringLiterals;

namespace {
constexpr ECatalogueKind kFoods = ECatalogueKind::Foods;

enum : int { kId, kDescription };
constexpr CTableColumn kColumns[] = {{"id"}, {"description"}};
constexpr CTableLayout kLayout = {"food_category.csv", kColumns};

/// As stored.
QString StoredName(const QString& name) {
    return name.isEmpty() ? u"Other foods"_s : CutImportedText(name);
}
}  // namespace

bool CFoodCategories::Read(CTableFolder& folder) {
    if (!folder.Has(kLayout)) {
        return true;
    }
    CCsvTable table = folder.Open(kLayout);
    while (table.NextRow()) {
        const std::string_view id = table.Field(kId);
        m_names.insert(QByteArray(id.data(), static_cast<qsizetype>(id.size())),
                       TableText(table.Field(kDescription)));
    }
    return folder.HasReadAll(table);
}

QString CFoodCategories::NameOf(std::string_view id) const {
    return m_names.value(QByteArray::fromRawData(id.data(), static_cast<qsizetype>(id.size())));
}

void CFoodCategories::Need(const QString& name) {
    if (m_needed.size() <= kMaximumCategories) {
        m_needed.insert(StoredName(name));
    }
}

void CFoodCategories::Prepare() {
    for (const CCategoryEntry& entry : m_database.Categories().List(kFoods)) {
        m_ids.insert(entry.name, entry.id);
    }
    const auto missing = std::ranges::count_if(
        m_needed, [this](const QString& name) { return !m_ids.contains(name); });
    if (missing > kMaximumCategories - m_database.Categories().Count()) {
        (void)FindOrAdd(StoredName({}));
    }
}

qint32 CFoodCategories::IdOf(const QString& name) {
    qint32 id = FindOrAdd(StoredName(name));
    if (name.isEmpty()) {
        m_withoutCategory += id >= 0 ? 1 : 0;
    } else if (id < 0) {
        id = m_ids.value(StoredName({}), -1);
        m_withoutRoom += id >= 0 ? 1 : 0;
    }
    return id;
}

qint32 CFoodCategories::FindOrAdd(const QString& stored) {
    const auto known = m_ids.constFind(stored);
    if (known != m_ids.constEnd()) {
        return *known;
    }
    CCategory category;
    category.SetKind(kFoods);
    category.SetName(stored);
    if (m_database.Categories().Count() >= kMaximumCategories ||
        !m_database.Categories().AddOrUpdate(-1, category)) {
        return -1;
    }
    m_ids.insert(stored, category.GetId());
    return category.GetId();
}

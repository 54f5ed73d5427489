#include "catalogue/share/TakeInPlan.h"

#include <algorithm>

#include "catalogue/items/CatalogueRules.h"

void CTakeInPlan::Note(const CSharedItem& item) {
    const CCatalogueLayout& numbers = CatalogueLayoutOf(item.kind);
    const QString type = numbers.namesType ? TextOf(item.record[numbers.type]) : QString();
    m_wanted[item.category][{TextOf(item.record[numbers.name]), type}].push_back(item.number);
    m_existing.push_back(0);
    m_kinds.push_back(item.kind);
}

void CTakeInPlan::Match(const std::vector<CCategory>& categories) {
    for (const CCategory& category : categories) {
        const auto index = static_cast<int>(m_categoryIds.size());
        const qint32 id = m_database.Categories().IdOf(category.GetKind(), category.GetName());
        m_categoryIds.push_back(id);
        if (id >= 0 && m_wanted.contains(index)) {
            MatchCategory(category.GetKind(), id, m_wanted[index]);
        }
    }
}

// Records that cannot be read match nothing.
void CTakeInPlan::MatchCategory(ECatalogueKind kind, qint32 id, const CWanted& wanted) {
    const CCatalogueLayout& numbers = CatalogueLayoutOf(kind);
    QHash<CNames, std::size_t> matched;
    (void)m_database.Items(kind).ReadRecords(
        {id, id, EWrongCount::IsDamage, numbers.type + 1},
        [&](ObjectId record, PropertyList& properties) {
            const CNames names(TextOf(properties[numbers.name]),
                               numbers.namesType ? TextOf(properties[numbers.type]) : QString());
            if (const auto found = wanted.constFind(names); found != wanted.constEnd()) {
                const std::size_t place = matched[names]++;
                if (place < found->size()) {
                    m_existing[static_cast<std::size_t>(found->at(place)) - 1] = record;
                }
            }
            return ETake::Taken;
        });
}

int CTakeInPlan::CountNewCategories() const {
    return static_cast<int>(
        std::ranges::count_if(m_wanted.keyBegin(), m_wanted.keyEnd(),
                              [this](int index) { return CategoryOf(index) < 0; }));
}

qint64 CTakeInPlan::RoomForExisting() const {
    std::array<std::vector<int>, 4> positions;  // by kind
    for (std::size_t i = 0; i < m_existing.size(); ++i) {
        if (m_existing[i] != 0) {
            positions.at(static_cast<std::size_t>(m_kinds[i]))
                .push_back(m_database.Items(m_kinds[i]).PositionOf(m_existing[i]));
        }
    }
    qint64 room = 0;
    for (const CCatalogueKind& kind : CatalogueKinds()) {
        room += CCatalogueRules(m_database, kind.code)
                    .RoomFor(positions.at(static_cast<std::size_t>(kind.code)), true);
    }
    return room;
}

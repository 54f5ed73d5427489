#include "catalogue/exchange/ExistingItems.h"

#include "catalogue/items/CategoryItems.h"

CExistingItems::CExistingItems(CDatabase& database, ECatalogueKind kind)
    : m_database(database), m_kind(kind), m_numbers(CatalogueLayoutOf(kind)), m_scratch(kind) {}

int CExistingItems::Find(qint32 categoryId, const QString& name, const QString& type) {
    const CIndex& index = IndexOf(categoryId);
    m_soughtCategory = categoryId;
    m_soughtHash = HashOf(name, type);
    const auto place = index.places.constFind(m_soughtHash);
    if (place == index.places.constEnd()) {
        return -1;
    }
    CItemDatabaseBase& items = m_database.Items(m_kind);
    const int position = items.FirstPositionOf(categoryId) + *place;
    if (items.ReadQuietly(position, m_scratch) && m_scratch.GetCategoryId() == categoryId &&
        m_scratch.GetName() == name && (!m_numbers.namesType || m_scratch.GetType() == type)) {
        return position;
    }
    // A hash collision, or a record that cannot be read.
    return m_database.Catalogue().FindItem(m_kind, categoryId, name, type);
}

void CExistingItems::NoteAdded() {
    if (const auto index = m_indexes.find(m_soughtCategory); index != m_indexes.end()) {
        Enter(*index, m_soughtHash);
    }
}

CExistingItems::CIndex& CExistingItems::IndexOf(qint32 categoryId) {
    const auto known = m_indexes.find(categoryId);
    if (known != m_indexes.end()) {
        return *known;
    }
    CIndex& index = m_indexes[categoryId];
    const int first = m_database.Items(m_kind).FirstPositionOf(categoryId);
    ForEachItemOf(m_database, m_kind, categoryId,
                  [&](int position, const QString& name, const QString& type) {
                      index.count = position - first;  // unreadable records count as places, too
                      Enter(index, HashOf(name, type));
                  });
    return index;
}

size_t CExistingItems::HashOf(const QString& name, const QString& type) const {
    return m_numbers.namesType ? qHashMulti(0, name, type) : qHash(name);
}

void CExistingItems::Enter(CIndex& index, size_t hash) {
    if (!index.places.contains(hash)) {
        index.places.insert(hash, index.count);
    }
    ++index.count;
}

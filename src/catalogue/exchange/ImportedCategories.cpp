#include "catalogue/exchange/ImportedCategories.h"

#include "catalogue/exchange/CategoryPictures.h"

#include <utility>

CImportedCategories::CImportedCategories(CDatabase& database, ECatalogueKind kind, QString folder)
    : m_database(database), m_kind(kind), m_folder(std::move(folder)) {}

qint32 CImportedCategories::IdOf(const QString& name) {
    const auto known = m_ids.constFind(name);
    if (known != m_ids.constEnd()) {
        return *known;
    }
    const qint32 stored = m_database.Categories().IdOf(m_kind, name);
    const qint32 id = stored >= 0 ? stored : Create(name);
    if (id >= 0) {
        m_ids.insert(name, id);
    }
    return id;
}

qint32 CImportedCategories::Create(const QString& name) {
    CCategory category;
    category.SetKind(m_kind);
    category.SetName(name);
    ReadCategoryPictures(m_folder, category);
    return m_database.Categories().AddOrUpdate(-1, category) ? category.GetId() : -1;
}

QString CImportedCategories::NameOf(qint32 id) {
    if (id != m_lastId) {
        m_lastId = id;
        m_lastName = m_database.Categories().NameOf(m_kind, id);
    }
    return m_lastName;
}

// Finds existing items during an import without searching the catalogue for every line.
#pragma once

#include <QHash>

#include "store/Database.h"

/// An index of the categories that the import has used, each read once. It relies on two things:
/// 1. while it exists, only the import changes items, and never category, name or type of an
///    existing one. Items that it adds are found only if it reports them;
/// 2. the store puts a new record after all others of its category, so that an item keeps its
///    place within the category.
class CExistingItems {
  public:
    CExistingItems(CDatabase& database, ECatalogueKind kind);

    /// Position of the first item with that category, name and type (menus and recipes: name
    /// alone); -1 when there is none.
    int Find(qint32 categoryId, const QString& name, const QString& type);
    /// Call after the item that Find sought last was added.
    void NoteAdded();

  private:
    struct CIndex {
        QHash<size_t, int> places;  ///< hash of the texts -> place of the first item with it
        int count = 0;
    };

    CIndex& IndexOf(qint32 categoryId);
    [[nodiscard]] size_t HashOf(const QString& name, const QString& type) const;
    static void Enter(CIndex& index, size_t hash);

    CDatabase& m_database;
    ECatalogueKind m_kind;
    const CCatalogueLayout& m_numbers;
    QHash<qint32, CIndex> m_indexes;
    qint32 m_soughtCategory = -1;
    size_t m_soughtHash = 0;
    CCatalogueItem m_scratch;
};

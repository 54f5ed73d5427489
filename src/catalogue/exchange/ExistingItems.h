// Which items an import meets again, without searching the catalogue for every line.
#pragma once

#include <QHash>

#include "store/Database.h"

/// An index over the categories that the run has touched, each read once. It relies on two things:
/// 1. while it lives, the run alone adds items, and reports each, or replaces them without
///    a change of category, name and type;
/// 2. the store puts a new record after all others of its category, so that an item keeps its
///    place within the category.
class CExistingItems {
  public:
    CExistingItems(CDatabase& database, ECatalogueKind kind);

    /// Position of the first item with that category, name and type (menus and recipes: name
    /// alone); -1 when there is none.
    int Find(qint32 categoryId, const QString& name, const QString& type);
    /// To be called after the item last sought was added.
    void NoteAdded();

  private:
    struct CIndex {
        QHash<size_t, int> places;  ///< hash of the texts -> place of the first such item
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

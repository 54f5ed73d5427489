// Which foods an import meets again, without searching the catalogue for every line.
#pragma once

#include <QHash>

#include "store/Database.h"

/// An index over the categories that the run has touched, each read once. It relies on two things:
/// 1. while it lives, foods are only added through the run, which tells it, or replaced without
///    a change of category, name and type;
/// 2. the store puts a new record behind all others of its category, so that a food keeps its
///    place within the category.
class CExistingFoods {
  public:
    explicit CExistingFoods(CDatabase& database);

    /// Position of the first food with the category, name and type of `food`; -1 when there is
    /// none.
    int Find(const CFoodItem& food);
    /// To be called after `food` was added.
    void NoteAdded(const CFoodItem& food);

  private:
    struct CIndex {
        QHash<size_t, int> places;  ///< hash of name and type -> place of the first such food
        int count = 0;
    };

    CIndex& IndexOf(qint32 categoryId);
    static void Enter(CIndex& index, const CFoodItem& food, int place);

    CDatabase& m_database;
    QHash<qint32, CIndex> m_indexes;
    CFoodItem m_scratch;
};

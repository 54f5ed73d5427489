// What the exchange of foods and of exercises has in common: items told apart by category, name
// and type.
#pragma once

#include "catalogue/CsvLayout.h"
#include "catalogue/ExistingItems.h"
#include "catalogue/ImportedCategories.h"

class CTypedItemsCsv : public CCsvLayout {
  protected:
    CTypedItemsCsv(CDatabase& database, ECatalogueKind kind, const QString& folder)
        : m_database(database),
          m_kind(kind),
          m_categories(database, kind, folder),
          m_existing(database, kind) {}

    /// Stores an item with name and type in the category of that name, which is created when it
    /// is missing.
    template <typename Item>
    EStored StoreIn(const QString& categoryName, Item& item, EExisting existing) {
        const qint32 categoryId = m_categories.IdOf(categoryName);
        if (categoryId < 0) {
            return EStored::Failed;
        }
        item.SetCategoryId(categoryId);
        const bool check = existing != EExisting::DoNotCheck;
        const int position =
            check ? m_existing.Find(categoryId, item.GetName(), item.GetType()) : -1;
        if (position >= 0 && existing == EExisting::Skip) {
            return EStored::Skipped;
        }
        if (!m_database.Items(m_kind).Write(position, item)) {
            return EStored::Failed;
        }
        if (position >= 0) {
            return EStored::Replaced;
        }
        m_existing.NoteAdded(categoryId, item.GetName(), item.GetType());
        return EStored::Added;
    }
    /// Empty when there is no such category.
    QString CategoryNameOf(qint32 categoryId) { return m_categories.NameOf(categoryId); }

  private:
    CDatabase& m_database;
    ECatalogueKind m_kind;
    CImportedCategories m_categories;
    CExistingItems m_existing;
};

// What the exchange of foods and of exercises has in common: items are identified by category, name
// and type.
#pragma once

#include "catalogue/exchange/CsvLayout.h"
#include "catalogue/exchange/ExistingItems.h"
#include "catalogue/exchange/ImportedCategories.h"
#include "catalogue/items/CatalogueKinds.h"

class CTypedItemsCsv : public CCsvLayout {
  protected:
    CTypedItemsCsv(CDatabase& database, ECatalogueKind kind, const QString& folder)
        : m_database(database),
          m_kind(kind),
          m_categories(database, kind, folder),
          m_existing(database, kind) {}

    /// Identifier of the category of that name (cut by CutImportedText), created if missing; -1
    /// when that fails.
    qint32 CategoryIdOf(QStringView name) {
        // Items come category by category.
        if (m_lastCategoryId < 0 || name != m_lastCategory) {
            m_lastCategory = name.toString();
            m_lastCategoryId = m_categories.IdOf(CutImportedText(name));
        }
        return m_lastCategoryId;
    }
    /// Stores an item with name and type in its category; one without a category fails.
    template <typename Item>
    EStored StoreTyped(const Item& item, EDuplicatePolicy policy) {
        const qint32 categoryId = item.GetCategoryId();
        if (categoryId < 0) {
            return EStored::Failed;
        }
        const bool check = policy != EDuplicatePolicy::DoNotCheck;
        const int position =
            check ? m_existing.Find(categoryId, item.GetName(), item.GetType()) : -1;
        if (position >= 0 && policy == EDuplicatePolicy::Skip) {
            return EStored::Skipped;
        }
        if (!m_database.Items(m_kind).Write(position, item)) {
            return EStored::Failed;
        }
        if (position >= 0) {
            return EStored::Replaced;
        }
        if (check) {
            m_existing.NoteAdded();
        }
        return EStored::Added;
    }
    [[nodiscard]] const CKindExchange& Texts() const { return KindOf(m_kind).exchange; }
    /// Empty when there is no such category.
    QString CategoryNameOf(qint32 categoryId) { return m_categories.NameOf(categoryId); }

  private:
    CDatabase& m_database;
    ECatalogueKind m_kind;
    CImportedCategories m_categories;
    CExistingItems m_existing;
    QString m_lastCategory;  ///< as the file names it
    qint32 m_lastCategoryId = -1;
};

// The categories of all four kinds of the catalogue, in one database.
#pragma once

#include <functional>
#include <optional>

#include "store/CatalogueLists.h"
#include "store/ItemDatabase.h"
#include "store/records/Category.h"

/// Each kind has its own identifiers, from 1 on. Positions are valid until the next change.
class CCategories : public CItemDatabase<CCategory> {
  public:
    explicit CCategories(CRecordStore& store) : CItemDatabase(store, kCategoryLayout) {}

    /// Adds (position -1) or updates a category, and sets its identifier. An addition fails without
    /// a message when the name exists in the kind, and at 256 categories with "Cannot add category.
    /// Maximum number of categories has been reached.". A failed write still returns true.
    bool AddOrUpdate(int position, CCategory& category);
    /// Whether so many more fit in; otherwise false after that message.
    bool MayAdd(int count);
    /// In stored order, which is the order of creation.
    CCategoryEntries ReadEntries(ECatalogueKind kind);
    std::vector<CCategoryEntry> List(ECatalogueKind kind) { return ReadEntries(kind).entries; }
    /// Position of the category of that name (exactly) or identifier; -1 when there is none.
    int Find(ECatalogueKind kind, const QString& name);
    int Find(ECatalogueKind kind, qint32 id);
    /// Identifier of the category of that name; -1 when there is none.
    qint32 IdOf(ECatalogueKind kind, const QString& name);
    /// Name of a category; empty when there is none of that identifier.
    QString NameOf(ECatalogueKind kind, qint32 id);

  private:
    std::optional<CCategoryEntry> FindEntry(
        ECatalogueKind kind, const std::function<bool(const CCategoryEntry&)>& isMatch);
};

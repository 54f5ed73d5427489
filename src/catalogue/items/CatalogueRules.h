// The commands on categories and items of one catalogue kind without their windows: which message
// for which input, what is asked, what is stored.
#pragma once

#include <vector>

#include "catalogue/items/CatalogueKinds.h"
#include "store/Database.h"

/// Items are given as list entries, whose positions must be current. All records that one command
/// changes become durable together, so that a crash leaves them all as before or all as after; a
/// failed step ends the command with its message and keeps what the steps before it did. The
/// database outlives the rules.
class CCatalogueRules {
  public:
    CCatalogueRules(CDatabase& database, ECatalogueKind kind);

    using Entries = std::vector<CCategoryListEntry>;

    /// Adds a category; its identifier, or -1 after "Category '%s' already exists." or "Cannot
    /// create new category".
    qint32 AddCategory(const QString& name);
    /// False after "Please enter category name." or "Category '%s' already exists."; the name as
    /// it was is fine. Outer blanks do not count.
    bool RenameCategory(qint32 categoryId, const QString& typed);
    /// Asks, then deletes the category's items and the category. -1 stands for none selected.
    bool DeleteCategory(qint32 categoryId);

    /// Shows why there is no category to put a new item into.
    bool MayAddItem(qint32 categoryId);
    bool MayEdit(const Entries& selected);
    /// Asks and deletes. Returns how many are gone.
    int Delete(const Entries& selected);

    /// What can be moved where: the other categories; empty after the message that says why not.
    std::vector<CCategoryEntry> MoveTargets(const Entries& selected);
    /// Asks and moves. Returns how many were moved.
    int Move(const Entries& selected, const CCategoryEntry& target);
    /// Asks and adds a copy with the first free suffix of _Copy01 to _Copy99, for which the end of
    /// a name that fills its record gives way. Returns the copy's position, -1 when there is none.
    int Duplicate(const Entries& selected);

    /// Gives every item of the category with the old name the new one. Outer blanks do not count.
    /// Returns the name they have now, cut to what a record holds; empty after a message.
    QString RenameItems(qint32 categoryId, const QString& oldName, const QString& typed);

    /// All items of the category with that name, sorted by type: also those that a full list of
    /// their category leaves out. Damaged items of the category may have had that name.
    CCategoryList ItemsOfName(qint32 categoryId, const QString& name);

  private:
    using Texts = std::vector<CTextArgument>;

    CItemDatabaseBase& Items() { return m_database.Items(m_kind.code); }
    [[nodiscard]] Texts NamesOf(const CCategoryListEntry& entry) const;
    bool DeleteItemsOf(qint32 categoryId);
    bool MoveItem(int position, qint32 categoryId);
    /// Empty when all 99 are taken.
    QString FreeCopyText(const CCatalogueItem& item);

    CDatabase& m_database;
    const CCatalogueKind& m_kind;
    bool m_namesType;
};

// The rules of the commands on categories and items of one catalogue kind, without windows: checks
// with their messages, questions, writes.
#pragma once

#include <vector>

#include "catalogue/items/CatalogueKinds.h"
#include "store/Database.h"

/// Items are passed as list entries, whose positions must be current. All records that a command
/// changes become durable together, so that after a crash either all or none are changed; a failed
/// step ends the command with its message and keeps the steps before it. The database outlives the
/// rules.
class CCatalogueRules {
  public:
    CCatalogueRules(CDatabase& database, ECatalogueKind kind);

    using Entries = std::vector<CCategoryListEntry>;

    /// Adds a category; its identifier, or -1 after "Category '%s' already exists." or "Cannot
    /// create new category".
    qint32 AddCategory(const QString& name);
    /// False after "Please enter category name." or "Category '%s' already exists."; an unchanged
    /// name is accepted. Outer blanks do not count.
    bool RenameCategory(qint32 categoryId, const QString& typed);
    /// Asks, then deletes the category's items and the category. -1: none is selected.
    bool DeleteCategory(qint32 categoryId);

    /// False after a message when there is no category, or none is selected, for a new item.
    bool MayAddItem(qint32 categoryId);
    bool MayEdit(const Entries& selected);
    /// Asks and deletes. Returns how many were deleted.
    int Delete(const Entries& selected);

    /// The categories to which the items can be moved; empty after a message when there are none.
    std::vector<CCategoryEntry> MoveTargets(const Entries& selected);
    /// Asks and moves. Returns how many were moved.
    int Move(const Entries& selected, const CCategoryEntry& target);
    /// Asks and adds a copy with the first free suffix of _Copy01 to _Copy99; a name too long for
    /// that is cut first. Returns the copy's position, -1 when there is none.
    int Duplicate(const Entries& selected);

    /// Renames all items of the category with the old name. Outer blanks do not count. Returns the
    /// new name, cut to what a record holds; empty after a message.
    QString RenameItems(qint32 categoryId, const QString& oldName, const QString& typed);

    /// All items of the category with that name, sorted by type, without a limit. `leftOut` counts
    /// damaged items of the whole category, whose names are unknown.
    CCategoryList ItemsOfName(qint32 categoryId, const QString& name);

    /// About the HistoryRoom of items, judged by some of them when they are many.
    qint64 RoomFor(const std::vector<int>& positions, bool withComponents);

  private:
    using Texts = std::vector<CTextArgument>;

    CItemDatabaseBase& Items() { return m_database.Items(m_kind.code); }
    [[nodiscard]] Texts NamesOf(const CCategoryListEntry& entry) const;
    [[nodiscard]] QString StepNameOf(QLatin1StringView command, const Entries& selected) const;
    /// None of a damaged menu or recipe.
    CPositionRange ComponentsOf(int position);
    bool DeleteItemsOf(qint32 categoryId);
    bool MoveItem(int position, qint32 categoryId);
    /// Empty when all 99 are taken.
    QString FreeCopyText(const CCatalogueItem& item);

    CDatabase& m_database;
    const CCatalogueKind& m_kind;
    bool m_namesType;
};

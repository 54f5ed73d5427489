// The categories of imported foods.
#pragma once

#include <QHash>
#include <QSet>

#include "store/Database.h"

class CTableFolder;

/// A catalogue has at most kMaximumCategories. When those that an import needs are more, the foods
/// of the last ones go to the category "Other foods", as do foods without a category.
class CFoodCategories {
  public:
    explicit CFoodCategories(CDatabase& database) : m_database(database) {}

    /// food_category.csv, if the download has it. False when the table is damaged or reading was
    /// cancelled.
    [[nodiscard]] bool Read(CTableFolder& folder);
    /// Name of the download's category with that identifier; empty when there is none.
    [[nodiscard]] QString NameOf(std::string_view id) const;

    /// Notes that a food has the category of that name, or none when it is empty.
    void Need(const QString& name);
    /// Call before the first IdOf, and in a group of records, which notices a write that failed: if
    /// not all needed categories can be added, adds "Other foods" first.
    void Prepare();
    /// Identifier of the category for a food of the category `name`, which may be empty; adds it if
    /// missing. -1 when that is not possible, nor is there "Other foods".
    qint32 IdOf(const QString& name);

    /// How many foods IdOf has put into "Other foods": for lack of room, and of a category.
    [[nodiscard]] int CountWithoutRoom() const { return m_withoutRoom; }
    [[nodiscard]] int CountWithoutCategory() const { return m_withoutCategory; }

  private:
    qint32 FindOrAdd(const QString& stored);

    CDatabase& m_database;
    QHash<QByteArray, QString> m_names;  ///< of the download, by "id"
    QSet<QString> m_needed;              ///< cut as they are stored; no more than can be stored
    QHash<QString, qint32> m_ids;
    int m_withoutRoom = 0;
    int m_withoutCategory = 0;
};

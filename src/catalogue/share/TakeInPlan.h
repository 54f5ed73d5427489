// What taking in a share file will do to a catalogue, made before anything is written.
#pragma once

#include <QHash>
#include <vector>

#include "catalogue/share/ShareReader.h"
#include "store/Database.h"

/// Which items of a file the catalogue has already, and in which categories it keeps them.
class CTakeInPlan {
  public:
    explicit CTakeInPlan(CDatabase& database) : m_database(database) {}

    /// Notes an item that the file has; call for all of them in order, then Match.
    void Note(const CSharedItem& item);
    void Match(const std::vector<CCategory>& categories);

    /// The item's record in the catalogue; 0 when it has none.
    [[nodiscard]] ObjectId ExistingOf(int number) const {
        return m_existing[static_cast<std::size_t>(number) - 1];
    }
    /// Identifier of a category of the file, by its index; -1 when the catalogue does not have it.
    [[nodiscard]] qint32 CategoryOf(int category) const {
        return m_categoryIds[static_cast<std::size_t>(category)];
    }
    void SetCategory(int category, qint32 id) {
        m_categoryIds[static_cast<std::size_t>(category)] = id;
    }
    /// Categories with items in the file that the catalogue does not have.
    [[nodiscard]] int CountNewCategories() const;
    /// About the HistoryRoom of the items that exist, with their components.
    [[nodiscard]] qint64 RoomForExisting() const;

  private:
    using CNames = std::pair<QString, QString>;
    /// Numbers of items by name and type.
    using CWanted = QHash<CNames, std::vector<int>>;

    void MatchCategory(ECatalogueKind kind, qint32 id, const CWanted& wanted);

    CDatabase& m_database;
    QHash<int, CWanted> m_wanted;  ///< by category
    std::vector<ObjectId> m_existing;
    std::vector<ECatalogueKind> m_kinds;
    std::vector<qint32> m_categoryIds;
};

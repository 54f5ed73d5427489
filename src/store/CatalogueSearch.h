// Searching the whole catalogue while a text is typed.
#pragma once

#include <limits>
#include <optional>
#include <unordered_set>

#include "store/Catalogue.h"
#include "store/Categories.h"
#include "store/Usage.h"
#include "store/search/SearchIndex.h"

struct CSearchQuery {
    QString text = {};
    unsigned kinds = kAllKinds;  ///< see KindBit
    qint32 categoryId = kAnyCategory;
    /// Database identifier of the profile whose habits count (see CProfiles::GetId); 0: nobody's.
    ObjectId profile = 0;
    int meal = -1;  ///< the meal that is chosen for; -1: none. Counts for an empty text only.
    int limit = std::numeric_limits<int>::max();
};

/// The index is built by the first query, or before it in steps, and follows every committed change
/// of the catalogue from then on: records that have changed are read again by the next query.
/// Nothing is called within a unit of work. All that is passed to the constructor outlives the
/// search.
class CCatalogueSearch : private CChangeListener {
  public:
    CCatalogueSearch(CRecordStore& store, CCatalogue& catalogue, CCategories& categories,
                     CUsage& usage);
    ~CCatalogueSearch() override;
    CCatalogueSearch(const CCatalogueSearch&) = delete;
    CCatalogueSearch& operator=(const CCatalogueSearch&) = delete;

    /// Reads some of the items into the index; false when there are no more, so that a query
    /// answers at once. For a window that must stay alive.
    bool PrepareSome();
    /// What CSearchIndex finds. For a text without words: what the profile eats, at the meal first,
    /// then often, then lately. Records that cannot be read are not found.
    CSearchMatches Find(const CSearchQuery& query);
    /// Bytes in memory; 0 before the first query.
    [[nodiscard]] std::size_t Size() const { return m_index ? m_index->Size() : 0; }
    /// Call when the volume is closed.
    void Forget();

  private:
    [[nodiscard]] bool Watches(qint64 database) const override;
    EPlatformError RecordChanged(const CRecordChange& change) override;
    void UnitCommitted() override;
    void UnitAbandoned() override;

    [[nodiscard]] bool IsBuilt() const;
    [[nodiscard]] std::optional<ECatalogueKind> KindOf(ObjectId database) const;
    /// After so many changes that reading all items again is faster than following them.
    void ForgetIfOutdated();
    void BringUpToDate();
    /// Reads up to `most` of the items that are not in the index yet; false when none are left.
    bool ReadSome(int most);
    /// Those of one kind, from m_nextPosition on. Returns how many were read.
    int ReadNext(ECatalogueKind kind, int most);
    void ReadCategories();
    void ReadAgain(const std::vector<CSearchMatch>& changed);
    void Add(ECatalogueKind kind, ObjectId record, const PropertyList& properties);
    ItemWeights Habits(const CSearchQuery& query);

    struct CChanges {
        std::vector<CSearchMatch> items;
        bool categories = false;
    };

    CRecordStore& m_store;
    CCatalogue& m_catalogue;
    CCategories& m_categories;
    CUsage& m_usage;
    std::optional<CSearchIndex> m_index;
    int m_nextKind = 0;      ///< while the index is being built: of the item to read next
    int m_nextPosition = 0;  ///< its position
    CChanges m_underWay;     ///< of the unit of work
    CChanges m_changed;      ///< since the last query
};

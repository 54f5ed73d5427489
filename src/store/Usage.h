// How often a profile has eaten what, and at which meal.
#pragma once

#include <QString>
#include <array>
#include <unordered_map>
#include <vector>

#include "store/RecordStore.h"
#include "store/engine/ChangeFeed.h"
#include "store/engine/UsageTable.h"
#include "store/records/DiaryEntries.h"
#include "store/search/UseKey.h"

struct CUseCount {
    int total = 0;
    std::array<int, kMealCount> atMeal{};
};
using CUseCounts = std::unordered_map<ItemUseKey, CUseCount>;

/// Follows every change of every profile's diet entries, in the same unit of work, in a table of
/// the volume. The store outlives it.
///
/// Invariants:
/// 1. The counts of a profile add up to the number of its diet entries; entries that cannot be read
///    have a row of their own. Counts that do not, or that a program that does not keep them has
///    passed by, are not used: the entries are counted when the counts are asked for, and the table
///    is written again with the next change.
/// 2. The counts of a profile go with its database.
class CUsage : private CChangeListener {
  public:
    explicit CUsage(CRecordStore& store);
    ~CUsage() override;
    CUsage(const CUsage&) = delete;
    CUsage& operator=(const CUsage&) = delete;

    /// The counts of a profile, given by its database identifier; none when they cannot be read.
    /// Valid until the next change of its diary.
    const CUseCounts& CountsOf(ObjectId profile);
    /// The items of the latest `most` entries, the latest first.
    std::vector<ItemUseKey> Latest(ObjectId profile, int most);
    /// Call when the volume is closed.
    void Forget();

  private:
    struct CProfileUse {
        UseRows rows;
        bool isStored = true;  ///< the table has these rows
        CUseCounts counts;     ///< calculated from the rows
    };

    [[nodiscard]] bool Watches(qint64 database) const override;
    EPlatformError RecordChanged(const CRecordChange& change) override;
    EPlatformError DatabaseDeleted(qint64 database) override;
    EPlatformError UnitBegins() override;
    EPlatformError UnitEnds() override;
    void UnitCommitted() override;
    void UnitAbandoned() override;

    /// The profile whose diet entries a database holds; 0 when it holds others.
    [[nodiscard]] ObjectId OwnerOf(ObjectId database) const;
    [[nodiscard]] CDatabaseHandle DietOf(ObjectId profile) const;
    UseRows CountEntries(CDatabaseHandle diet);
    EPlatformError Store(ObjectId profile, const UseRows& deltas);

    CRecordStore& m_store;
    CUsageTable m_table;
    /// Of each database that has been asked for.
    mutable std::unordered_map<ObjectId, ObjectId> m_owners;
    std::unordered_map<ObjectId, UseRows> m_deltas;  ///< by profile, of the unit under way
    std::unordered_map<ObjectId, CProfileUse> m_profiles;
};

#include "store/Usage.h"

#include <algorithm>
#include <utility>

#include "store/Profiles.h"
#include "store/engine/RecordCodec.h"

namespace {
// Property numbers of a diet entry.
enum : int { kMeal = 1, kKind, kCategory, kName, kType, kUsedProperties };

/// The row of entries that cannot be read.
const CUse kUnreadable{-1, {}, {}, {}, -1};

/// What an entry uses; takes its texts.
CUse UseOf(PropertyList& properties) {
    if (std::ssize(properties) < kUsedProperties) {
        return kUnreadable;
    }
    const auto* meal = std::get_if<qint32>(&properties[kMeal]);
    const auto* kind = std::get_if<qint32>(&properties[kKind]);
    auto* category = std::get_if<QString>(&properties[kCategory]);
    auto* name = std::get_if<QString>(&properties[kName]);
    auto* type = std::get_if<QString>(&properties[kType]);
    if (meal == nullptr || kind == nullptr || category == nullptr || name == nullptr ||
        type == nullptr) {
        return kUnreadable;
    }
    return {.kind = *kind,
            .category = std::move(*category),
            .name = std::move(*name),
            .type = std::move(*type),
            .meal = *meal};
}

CUse UseOf(const CRecordState& state) {
    PropertyList properties;
    return DecodeRecord(state.body, properties, kUsedProperties) ? UseOf(properties) : kUnreadable;
}

ItemUseKey KeyOf(const CUse& use) {
    return UseKeyOf(static_cast<ECatalogueKind>(use.kind), use.category, use.name, use.type);
}

CUseCounts CountsOfRows(const UseRows& rows) {
    CUseCounts counts;
    for (const auto& [use, count] : rows) {
        CUseCount& sum = counts[KeyOf(use)];
        sum.total += static_cast<int>(count);
        if (use.meal >= 0 && use.meal < kMealCount) {
            sum.atMeal[use.meal] += static_cast<int>(count);
        }
    }
    return counts;
}

}  // namespace

CUsage::CUsage(CRecordStore& store) : m_store(store), m_table(store.EngineState()) {
    m_store.AddListener(this);
}

CUsage::~CUsage() {
    m_store.RemoveListener(this);
}

const CUseCounts& CUsage::CountsOf(ObjectId profile) {
    if (const auto known = m_profiles.find(profile); known != m_profiles.end()) {
        return known->second.counts;
    }
    CProfileUse& use = m_profiles[profile];
    const CDatabaseHandle diet = DietOf(profile);
    if (!diet.IsValid()) {
        return use.counts;
    }
    const int count = m_store.CountRecords(diet);
    use.isStored = m_table.Load() == kErrorSuccess && m_table.SumOf(profile) == count &&
                   (count == 0 || m_table.Read(profile, use.rows) == kErrorSuccess);
    if (!use.isStored) {
        use.rows = CountEntries(diet);
    }
    use.counts = CountsOfRows(use.rows);
    return use.counts;
}

std::vector<ItemUseKey> CUsage::Latest(ObjectId profile, int most) {
    std::vector<ItemUseKey> latest;
    CDatabaseHandle diet = DietOf(profile);
    const int count = diet.IsValid() ? m_store.CountRecords(diet) : 0;
    PropertyList properties;
    for (int position = std::max(0, count - most); position < count; ++position) {
        if (m_store.SeekToPosition(diet, position) != 0 &&
            m_store.ReadCurrent(diet, properties, kUsedProperties)) {
            latest.push_back(KeyOf(UseOf(properties)));
        }
    }
    std::ranges::reverse(latest);
    return latest;
}

void CUsage::Forget() {
    m_table.Forget();
    m_owners.clear();
    m_profiles.clear();
}

UseRows CUsage::CountEntries(CDatabaseHandle diet) {
    UseRows rows;
    PropertyList properties;
    const int count = m_store.CountRecords(diet);
    for (int position = 0; position < count; ++position) {
        const bool isRead = m_store.SeekToPosition(diet, position) != 0 &&
                            m_store.ReadCurrent(diet, properties, kUsedProperties);
        ++rows[isRead ? UseOf(properties) : kUnreadable];
    }
    return rows;
}

bool CUsage::Watches(qint64 database) const {
    return OwnerOf(database) != 0;
}

ObjectId CUsage::OwnerOf(ObjectId database) const {
    if (const auto known = m_owners.find(database); known != m_owners.end()) {
        return known->second;
    }
    m_owners[database] = 0;
    std::vector<CDatabaseInfo> databases;
    if (!m_store.EnumerateDatabases(0, databases)) {
        return 0;
    }
    for (const CDatabaseInfo& diet : databases) {
        m_owners[diet.id] = 0;
        for (const CDatabaseInfo& profile : databases) {
            if (profile.type == kProfileType && diet.type == kDietType &&
                diet.name.compare(DietDatabaseName(profile.name), Qt::CaseInsensitive) == 0) {
                m_owners[diet.id] = profile.id;
            }
        }
    }
    return m_owners[database];
}

CDatabaseHandle CUsage::DietOf(ObjectId profile) const {
    (void)OwnerOf(profile);  // makes the databases known
    const auto found = std::ranges::find_if(
        m_owners, [profile](const auto& row) { return profile != 0 && row.second == profile; });
    return found == m_owners.end() ? CDatabaseHandle{} : CDatabaseHandle{found->first};
}

EPlatformError CUsage::RecordChanged(const CRecordChange& change) {
    UseRows& deltas = m_deltas[OwnerOf(change.database)];
    if (change.before.exists) {
        --deltas[UseOf(change.before)];
    }
    if (change.after.exists) {
        ++deltas[UseOf(change.after)];
    }
    return kErrorSuccess;
}

EPlatformError CUsage::DatabaseDeleted(qint64 database) {
    m_deltas.erase(OwnerOf(database));
    m_deltas.erase(database);
    m_profiles.erase(OwnerOf(database));
    m_profiles.erase(database);
    m_owners.clear();
    return m_table.DeleteOwner(database);
}

// Outside the unit's transaction, see CUsageTable.
EPlatformError CUsage::UnitBegins() {
    return m_table.Load();
}

EPlatformError CUsage::UnitEnds() {
    for (const auto& [profile, deltas] : m_deltas) {
        if (const EPlatformError error = Store(profile, deltas); error != kErrorSuccess) {
            return error;
        }
    }
    return m_table.Stamp();
}

EPlatformError CUsage::Store(ObjectId profile, const UseRows& deltas) {
    const auto known = m_profiles.find(profile);
    if (known != m_profiles.end() && !known->second.isStored) {
        EPlatformError error = m_table.DeleteOwner(profile);
        if (error == kErrorSuccess) {
            error = m_table.Add(profile, known->second.rows);
        }
        return error == kErrorSuccess ? m_table.Add(profile, deltas) : error;
    }
    qint64 sum = m_table.SumOf(profile);
    for (const auto& [use, count] : deltas) {
        sum += count;
    }
    const bool isComplete = sum == m_store.CountRecords(DietOf(profile));
    return isComplete ? m_table.Add(profile, deltas) : m_table.DeleteOwner(profile);
}

void CUsage::UnitCommitted() {
    m_table.UnitCommitted();
    for (const auto& [profile, deltas] : m_deltas) {
        m_profiles.erase(profile);
    }
    m_deltas.clear();
}

void CUsage::UnitAbandoned() {
    m_deltas.clear();
    m_table.UnitAbandoned();
    m_owners.clear();
    m_profiles.clear();
}

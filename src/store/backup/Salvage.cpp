#include "store/backup/Salvage.h"

#include <algorithm>

#include "store/backup/RecordCheck.h"
#include "store/backup/SalvagedNames.h"
#include "store/engine/RecordCodec.h"
#include "store/records/DatabaseLayouts.h"
#include "store/records/RecordFit.h"

namespace {
/// Whether the record may be one of a database of the layout, whatever is wrong with its values.
bool IsOfLayout(const PropertyList& properties, const CRecordLayout& layout) {
    return HasTypesOf(properties, LayoutOfRecord(properties, layout));
}
}  // namespace

EPlatformError CSalvage::Read(const QString& path, const CopyProgress& progress) {
    if (const EPlatformError error = m_rows.Read(path, progress); error != kErrorSuccess) {
        return error;
    }
    m_directory = m_rows.Directory();
    m_progress = progress;
    if (!PlaceListed()) {
        return kErrorOperationAborted;
    }
    NameDatabases(m_databases, *this);
    return PlaceUnlisted() ? kErrorSuccess : kErrorOperationAborted;
}

/// False when the user has cancelled.
bool CSalvage::Advance() {
    const qint64 total = std::ssize(m_rows.Records());
    m_done = std::min(m_done + 1, total);
    return !m_progress || m_progress(m_done, total);
}

CSalvage::Lists CSalvage::ListsOfDatabases() {
    const auto rowOf = [](const auto& block) { return block.first; };
    m_areListsWhole = !m_rows.Blocks().empty() && !m_rows.IsCut() &&
                      std::ranges::equal(m_rows.Blocks(), m_directory, {}, rowOf, rowOf) &&
                      std::ranges::all_of(m_rows.Blocks(), [](const auto& row) {
                          const CSalvagedBlock& block = row.second;
                          return AreEntriesSound(block.entries, block.firstKey, block.count);
                      });
    Lists lists;
    std::vector<const SalvagedBlocks::value_type*> doubtful;
    for (const auto& row : m_rows.Blocks()) {
        if (Contains(m_directory, row)) {
            lists[row.second.database].push_back(&row.second);
        } else {
            doubtful.push_back(&row);
        }
    }
    std::erase_if(m_directory, [this](const auto& row) { return Contains(m_rows.Blocks(), row); });
    for (const auto* row : doubtful) {
        if (const ObjectId owner = OwnerOf(row->first, row->second); owner != 0) {
            lists[owner].push_back(&row->second);
        }
    }
    for (const auto& [row, block] : m_directory) {
        lists[block.database].push_back(&block);  // whose entries are lost
    }
    for (const auto& [id, info] : m_rows.Infos()) {
        lists[id];
    }
    for (auto& [id, list] : lists) {
        std::ranges::sort(list, {}, &CSalvagedBlock::ordinal);
    }
    return lists;
}

bool CSalvage::PlaceListed() {
    for (const auto& [id, list] : ListsOfDatabases()) {
        CSalvagedDatabase& database = m_databases.emplace_back();
        database.info.id = id;
        if (const auto info = m_rows.Infos().find(id); info != m_rows.Infos().end()) {
            database.info = info->second;
            database.layout = LayoutOfDatabase(database.info.name, database.info.type);
        }
        std::vector<CIndexEntry> misfits;
        for (const CSalvagedBlock* block : list) {
            if (!PlaceBlock(*block, database, misfits)) {
                return false;
            }
        }
        if (const CRecordLayout* layout = LayoutOfFirst(misfits);
            database.entries.empty() && layout != nullptr) {
            // Its name or type is damaged.
            database.layout = layout;
            std::erase_if(misfits, [this](const CIndexEntry& entry) {
                return !m_placed.insert(entry.record).second;
            });
            database.entries.swap(misfits);
        }
        std::ranges::stable_sort(database.entries, {}, &CIndexEntry::key);
    }
    std::erase_if(m_databases,
                  [](const CSalvagedDatabase& database) { return database.layout == nullptr; });
    for (CSalvagedDatabase& database : m_databases) {
        PlaceMisnumbered(database);
    }
    return true;
}

// A record that does not fit is one of another database.
bool CSalvage::PlaceBlock(const CSalvagedBlock& block, CSalvagedDatabase& database,
                          std::vector<CIndexEntry>& misfits) {
    database.listed += std::clamp<qint64>(block.count, 0, kBlockCapacity);
    for (const CIndexEntry& entry : block.entries) {
        if (!Advance()) {
            return false;
        }
        PropertyList properties;
        const std::optional<qint64> key =
            m_rows.Decode(entry.record, properties) ? KeyOf(properties) : std::nullopt;
        const bool fits = database.layout != nullptr && IsOfLayout(properties, *database.layout);
        if (key != entry.key) {
            database.missing.push_back(entry);
        } else if (!fits) {
            misfits.push_back(entry);
        } else if (m_placed.insert(entry.record).second) {
            database.entries.push_back(entry);
        }
    }
    return true;
}

bool CSalvage::Contains(const SalvagedBlocks& blocks, const SalvagedBlocks::value_type& block) {
    const auto [first, last] = blocks.equal_range(block.first);
    return std::any_of(first, last,
                       [&block](const auto& row) { return row.second.IsSameAs(block.second); });
}

/// The database of a block that is not the same in its row and in the directory, of which it takes
/// what may be that of the block. 0 when it is not known which of them is damaged.
ObjectId CSalvage::OwnerOf(qint64 row, const CSalvagedBlock& block) {
    const auto same = std::ranges::find_if(
        m_directory, [&block](const auto& listed) { return listed.second.IsSameAs(block); });
    if (same != m_directory.end()) {
        m_directory.erase(same);  // the number of the row is damaged
        return block.database;
    }
    const auto found = m_directory.find(row);
    if (found == m_directory.end()) {
        return block.database;
    }
    const CSalvagedBlock listed = m_directory.extract(found).mapped();
    const ObjectId other = listed.database;
    if (other == block.database) {
        return other;  // the ordinal is damaged
    }
    const bool isOwn = CanOwn(block.database, block, listed);
    if (isOwn != CanOwn(other, block, listed)) {
        return isOwn ? block.database : other;
    }
    for (const CIndexEntry& entry : block.entries) {
        if (const ObjectId known = m_rows.HomeInHistory(entry.record);
            known == block.database || known == other) {
            return known;
        }
    }
    return 0;
}

bool CSalvage::CanOwn(ObjectId database, const CSalvagedBlock& block,
                      const CSalvagedBlock& listed) const {
    const auto info = m_rows.Infos().find(database);
    if (info == m_rows.Infos().end() || !m_rows.IsInOrder(database, listed)) {
        return false;
    }
    const CRecordLayout* layout = LayoutOfDatabase(info->second.name, info->second.type);
    const CRecordLayout* found = LayoutOfFirst(block.entries);
    return layout == nullptr || found == nullptr || layout == found;
}

const CRecordLayout* CSalvage::LayoutOfFirst(const std::vector<CIndexEntry>& entries) const {
    PropertyList properties;
    if (std::ranges::none_of(entries, [&](const CIndexEntry& entry) {
            return m_rows.Decode(entry.record, properties);
        })) {
        return nullptr;
    }
    for (const CRecordLayout* layout : kCatalogueDatabases) {
        if (HasTypesOf(properties, *layout)) {
            return layout;
        }
    }
    for (const CProfileDatabase& row : kProfileDatabases) {
        if (HasTypesOf(properties, row.layout)) {
            return &row.layout;
        }
    }
    return nullptr;
}

// A single damaged bit, in a list or in the number of a record, parts the two. Once every record
// has been placed that its list has as it is, one whose key is another is no other list's.
void CSalvage::PlaceMisnumbered(CSalvagedDatabase& database) {
    constexpr int kBits = 63;  // numbers are positive
    PropertyList properties;
    const auto isFree = [&](ObjectId record) {
        return !m_placed.contains(record) && ReadRecord(record, *database.layout, properties);
    };
    for (const CIndexEntry& listed : database.missing) {
        ObjectId record = 0;
        for (int bit = 0; record == 0 && bit < kBits; ++bit) {
            const ObjectId other = listed.record ^ (ObjectId{1} << bit);
            record = isFree(other) && KeyOf(properties) == listed.key ? other : 0;
        }
        record = record == 0 ? listed.record : record;
        if (const auto key = isFree(record) ? KeyOf(properties) : std::nullopt) {
            m_placed.insert(record);
            database.entries.push_back({*key, record});
        }
    }
}

bool CSalvage::PlaceUnlisted() {
    std::vector<ObjectId> unlisted;
    for (const auto& [record, place] : m_rows.Records()) {
        if (!m_placed.contains(record)) {
            unlisted.push_back(record);
        }
    }
    std::ranges::sort(unlisted);
    for (const ObjectId record : unlisted) {
        if (!Advance()) {
            return false;
        }
        PropertyList properties;
        if (!m_rows.Decode(record, properties)) {
            continue;
        }
        CSalvagedDatabase* home = HomeOf(record, properties);
        const std::optional<qint64> key = KeyOf(properties);
        if (home == nullptr || !key) {
            ++m_homeless;
            continue;
        }
        home->entries.push_back({*key, record});
    }
    for (CSalvagedDatabase& database : m_databases) {
        std::ranges::stable_sort(database.entries, {}, &CIndexEntry::key);
    }
    return true;
}

CSalvagedDatabase* CSalvage::HomeOf(ObjectId record, const PropertyList& properties) {
    const ObjectId known = m_rows.HomeInHistory(record);
    CSalvagedDatabase* only = nullptr;
    CSalvagedDatabase* withGap = nullptr;
    int homes = 0;
    int gaps = 0;
    for (CSalvagedDatabase& database : m_databases) {
        if (!IsOfLayout(properties, *database.layout)) {
            continue;
        }
        if (database.info.id == known) {
            return &database;
        }
        only = &database;
        ++homes;
        if (database.HasGap()) {
            withGap = &database;
            ++gaps;
        }
    }
    // What a profile left that could not be deleted whole is nobody else's.
    const bool isOfProfile = only != nullptr && only->info.type != kCatalogueType;
    if (isOfProfile && m_areListsWhole) {
        return nullptr;
    }
    return homes == 1 ? only : gaps == 1 ? withGap : nullptr;
}

bool CSalvage::ReadRecord(ObjectId record, const CRecordLayout& layout,
                          PropertyList& properties) const {
    return m_rows.Decode(record, properties) && IsOfLayout(properties, layout);
}

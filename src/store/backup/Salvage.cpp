#include "store/backup/Salvage.h"

#include <algorithm>

#include "store/backup/RecordCheck.h"
#include "store/backup/SalvagedNames.h"
#include "store/engine/RecordCodec.h"
#include "store/engine/VolumeIdentity.h"
#include "store/records/DatabaseLayouts.h"
#include "store/records/RecordFit.h"

namespace {
constexpr std::size_t kDirectoryColumns = 5;

template <typename Value>
const Value* At(const CScannedRow& row, std::size_t number) {
    return std::get_if<Value>(&row.values[number]);
}

/// The whole numbers from column `first` on; nothing unless all are.
std::optional<std::vector<qint64>> Numbers(const CScannedRow& row, std::size_t first,
                                           std::size_t count) {
    std::vector<qint64> numbers;
    for (std::size_t i = first; i < first + count; ++i) {
        const auto* number = At<qint64>(row, i);
        if (number == nullptr) {
            return std::nullopt;
        }
        numbers.push_back(*number);
    }
    return numbers;
}

/// Whether the record may be one of a database of the layout, whatever is wrong with its values.
bool IsOfLayout(const PropertyList& properties, const CRecordLayout& layout) {
    return HasTypesOf(properties, LayoutOfRecord(properties, layout));
}
}  // namespace

EPlatformError CSalvage::Read(const QString& path, const CopyProgress& progress) {
    if (!m_scan.Open(path)) {
        return kErrorBadFormat;
    }
    const quint32 pages = m_scan.CountPages();
    for (quint32 page = 1; page <= pages; ++page) {
        m_scan.ForEachRow(
            page, [this](const CRowPlace& place, const CScannedRow& row) { TakeRow(place, row); });
        if (progress && !progress(page, pages)) {
            return kErrorOperationAborted;
        }
    }
    if (m_records.empty() || (m_infos.empty() && m_blocks.empty() && m_directory.empty())) {
        return kErrorBadFormat;
    }
    m_progress = progress;
    if (!PlaceListed()) {
        return kErrorOperationAborted;
    }
    NameDatabases(m_databases, *this);
    return PlaceUnlisted() ? kErrorSuccess : kErrorOperationAborted;
}

/// False when the user has cancelled.
bool CSalvage::Advance() {
    const qint64 total = std::ssize(m_records);
    m_done = std::min(m_done + 1, total);
    return !m_progress || m_progress(m_done, total);
}

void CSalvage::TakeRow(const CRowPlace& place, const CScannedRow& row) {
    if (row.isOfIndex) {
        TakeIndexRow(place, row);
    } else if (row.id > 0 && !row.values.empty() &&
               std::holds_alternative<std::monostate>(row.values[0])) {
        TakeTableRow(place, row);
    }
}

// The tables are told apart by their columns, of which the first is the row's identifier.
void CSalvage::TakeTableRow(const CRowPlace& place, const CScannedRow& row) {
    constexpr std::size_t kRecordColumns = 2;
    constexpr std::size_t kDatabaseColumns = 4;
    constexpr std::size_t kBlockColumns = 6;
    constexpr std::size_t kChangeColumns = 10;
    if (row.values.size() == kRecordColumns) {
        const auto* body = At<QByteArray>(row, 1);
        if (body != nullptr && !CVolumeIdentity::FindIn(*body)) {
            m_records.emplace(row.id, place);
        }
    } else if (row.values.size() == kDatabaseColumns) {
        const auto* name = At<CScannedText>(row, 1);
        const auto numbers = Numbers(row, 2, 2);
        if (name != nullptr && numbers) {
            m_infos[row.id] = {row.id, QString::fromUtf8(name->utf8),
                               static_cast<quint32>(numbers->at(0)),
                               static_cast<quint32>(numbers->at(1))};
        }
    } else if (row.values.size() == kBlockColumns) {
        const auto numbers = Numbers(row, 1, 4);
        const auto* entries = At<QByteArray>(row, 5);
        if (numbers && entries != nullptr) {
            m_blocks.insert({row.id,
                             {numbers->at(0), numbers->at(1), numbers->at(2), numbers->at(3),
                              DecodeEntries(*entries), place}});
        }
    } else if (row.values.size() == kChangeColumns) {
        // Database, first record and number of records.
        if (const auto numbers = Numbers(row, 1, 3); numbers && numbers->at(1) > 0) {
            m_history[numbers->at(1)] = {numbers->at(0), numbers->at(2)};
        }
    }
}

void CSalvage::TakeIndexRow(const CRowPlace& place, const CScannedRow& row) {
    constexpr std::size_t kValueColumns = 3;
    if (row.values.size() == kValueColumns) {
        const auto* owner = At<qint64>(row, 0);
        const auto* name = At<CScannedText>(row, 1);
        const auto* value = At<CScannedText>(row, 2);
        if (owner != nullptr && name != nullptr && value != nullptr) {
            m_values.push_back(
                {*owner, QString::fromUtf8(name->utf8), QString::fromUtf8(value->utf8)});
        }
    } else if (row.values.size() == kDirectoryColumns) {
        // Database, ordinal, first key, count, and the block's row.
        if (const auto numbers = Numbers(row, 0, kDirectoryColumns)) {
            m_directory.insert(
                {numbers->at(4),
                 {numbers->at(0), numbers->at(1), numbers->at(2), numbers->at(3), {}, place}});
        }
    }
}

CSalvage::Lists CSalvage::ListsOfDatabases() {
    const auto rowOf = [](const auto& block) { return block.first; };
    m_areListsWhole = !m_blocks.empty() && !m_scan.IsCut() &&
                      std::ranges::equal(m_blocks, m_directory, {}, rowOf, rowOf) &&
                      std::ranges::all_of(m_blocks, [](const auto& row) {
                          const CBlock& block = row.second;
                          return AreEntriesSound(block.entries, block.firstKey, block.count);
                      });
    Lists lists;
    std::vector<const Blocks::value_type*> doubtful;
    for (const auto& row : m_blocks) {
        if (Contains(m_directory, row)) {
            lists[row.second.database].push_back(&row.second);
        } else {
            doubtful.push_back(&row);
        }
    }
    std::erase_if(m_directory, [this](const auto& row) { return Contains(m_blocks, row); });
    for (const auto* row : doubtful) {
        if (const ObjectId owner = OwnerOf(row->first, row->second); owner != 0) {
            lists[owner].push_back(&row->second);
        }
    }
    for (const auto& [row, block] : m_directory) {
        lists[block.database].push_back(&block);  // whose entries are lost
    }
    for (const auto& [id, info] : m_infos) {
        lists[id];
    }
    for (auto& [id, list] : lists) {
        std::ranges::sort(list, {}, &CBlock::ordinal);
    }
    return lists;
}

bool CSalvage::PlaceListed() {
    for (const auto& [id, list] : ListsOfDatabases()) {
        CSalvagedDatabase& database = m_databases.emplace_back();
        database.info.id = id;
        if (const auto info = m_infos.find(id); info != m_infos.end()) {
            database.info = info->second;
            database.layout = LayoutOfDatabase(database.info.name, database.info.type);
        }
        std::vector<CIndexEntry> misfits;
        for (const CBlock* block : list) {
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
bool CSalvage::PlaceBlock(const CBlock& block, CSalvagedDatabase& database,
                          std::vector<CIndexEntry>& misfits) {
    database.listed += std::clamp<qint64>(block.count, 0, kBlockCapacity);
    for (const CIndexEntry& entry : block.entries) {
        if (!Advance()) {
            return false;
        }
        PropertyList properties;
        const std::optional<qint64> key =
            Decode(entry.record, properties) ? KeyOf(properties) : std::nullopt;
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

bool CSalvage::Contains(const Blocks& blocks, const Blocks::value_type& block) {
    const auto [first, last] = blocks.equal_range(block.first);
    return std::any_of(first, last,
                       [&block](const auto& row) { return row.second.IsSameAs(block.second); });
}

/// The database of a block that is not the same in its row and in the directory, of which it takes
/// what may be that of the block. 0 when it is not known which of them is damaged.
ObjectId CSalvage::OwnerOf(qint64 row, const CBlock& block) {
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
    const CBlock listed = m_directory.extract(found).mapped();
    const ObjectId other = listed.database;
    if (other == block.database) {
        return other;  // the ordinal is damaged
    }
    const bool isOwn = CanOwn(block.database, block, listed);
    if (isOwn != CanOwn(other, block, listed)) {
        return isOwn ? block.database : other;
    }
    for (const CIndexEntry& entry : block.entries) {
        if (const ObjectId known = HomeInHistory(entry.record);
            known == block.database || known == other) {
            return known;
        }
    }
    return 0;
}

bool CSalvage::CanOwn(ObjectId database, const CBlock& block, const CBlock& listed) const {
    const auto info = m_infos.find(database);
    if (info == m_infos.end() || !IsInOrder(database, listed)) {
        return false;
    }
    const CRecordLayout* layout = LayoutOfDatabase(info->second.name, info->second.type);
    const CRecordLayout* found = LayoutOfFirst(block.entries);
    return layout == nullptr || found == nullptr || layout == found;
}

/// Whether the directory, which is in order of database and ordinal, would be with this database in
/// that row.
bool CSalvage::IsInOrder(ObjectId database, const CBlock& listed) const {
    const auto keyAt = [this, &listed](int cell) {
        const auto row = m_scan.RowAt({listed.place.page, static_cast<quint16>(cell)});
        return row && row->isOfIndex && row->values.size() == kDirectoryColumns
                   ? Numbers(*row, 0, 2)
                   : std::nullopt;
    };
    const std::vector<qint64> own{database, listed.ordinal};
    const auto before = listed.place.cell > 0 ? keyAt(listed.place.cell - 1) : std::nullopt;
    const auto after = keyAt(listed.place.cell + 1);
    return (!before || *before < own) && (!after || own < *after);
}

const CRecordLayout* CSalvage::LayoutOfFirst(const std::vector<CIndexEntry>& entries) const {
    PropertyList properties;
    if (std::ranges::none_of(
            entries, [&](const CIndexEntry& entry) { return Decode(entry.record, properties); })) {
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
    for (const auto& [record, place] : m_records) {
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
        if (!Decode(record, properties)) {
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

ObjectId CSalvage::HomeInHistory(ObjectId record) const {
    const auto next = m_history.upper_bound(record);
    if (next == m_history.begin()) {
        return 0;
    }
    const auto& [first, run] = *std::prev(next);
    return record - first < run.count ? run.database : 0;
}

CSalvagedDatabase* CSalvage::HomeOf(ObjectId record, const PropertyList& properties) {
    const ObjectId known = HomeInHistory(record);
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

bool CSalvage::Decode(ObjectId record, PropertyList& properties) const {
    const auto place = m_records.find(record);
    const std::optional<CScannedRow> row =
        place == m_records.end() ? std::nullopt : m_scan.RowAt(place->second);
    const auto* body = row && row->values.size() == 2 ? At<QByteArray>(*row, 1) : nullptr;
    return body != nullptr && DecodeRecord(*body, properties);
}

bool CSalvage::ReadRecord(ObjectId record, const CRecordLayout& layout,
                          PropertyList& properties) const {
    return Decode(record, properties) && IsOfLayout(properties, layout);
}

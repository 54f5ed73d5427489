#include "store/backup/Salvage.h"

#include <QtEndian>
#include <algorithm>

#include "store/backup/RecordCheck.h"
#include "store/backup/SalvagedNames.h"
#include "store/engine/RecordCodec.h"
#include "store/engine/VolumeIdentity.h"
#include "store/records/DatabaseLayouts.h"
#include "store/records/ItemRecord.h"

namespace {
constexpr qsizetype kEntrySize = 16;

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

std::vector<CIndexEntry> EntriesIn(const QByteArray& bytes) {
    std::vector<CIndexEntry> entries;
    for (qsizetype at = 0; at + kEntrySize <= bytes.size(); at += kEntrySize) {
        entries.push_back({qFromLittleEndian<qint64>(bytes.data() + at),
                           qFromLittleEndian<qint64>(bytes.data() + at + sizeof(qint64))});
    }
    return entries;
}

bool FitsLayout(const PropertyList& properties, const CRecordLayout& layout) {
    return CItemRecord(layout).SetProperties(PropertyList(properties));
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
    PlaceListed();
    NameDatabases(m_databases);
    PlaceUnlisted();
    return kErrorSuccess;
}

void CSalvage::TakeRow(const CRowPlace& place, const CScannedRow& row) {
    if (row.isOfIndex) {
        TakeIndexRow(row);
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
            m_blocks[row.id] = {numbers->at(0), numbers->at(1), numbers->at(3),
                                EntriesIn(*entries)};
        }
    } else if (row.values.size() == kChangeColumns) {
        // Database, first record and number of records.
        if (const auto numbers = Numbers(row, 1, 3); numbers && numbers->at(1) > 0) {
            m_history[numbers->at(1)] = {numbers->at(0), numbers->at(2)};
        }
    }
}

void CSalvage::TakeIndexRow(const CScannedRow& row) {
    constexpr std::size_t kValueColumns = 3;
    constexpr std::size_t kDirectoryColumns = 5;
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
            m_directory[numbers->at(4)] = {numbers->at(0), numbers->at(1), numbers->at(3), {}};
        }
    }
}

void CSalvage::PlaceListed() {
    const auto rowOf = [](const auto& block) { return block.first; };
    m_areListsWhole = !m_blocks.empty() && !m_scan.IsCut() &&
                      std::ranges::equal(m_blocks, m_directory, {}, rowOf, rowOf);
    std::map<ObjectId, std::vector<const CBlock*>> blocks;
    for (const auto& [row, block] : m_directory) {
        m_blocks.try_emplace(row, block);
    }
    for (const auto& [row, block] : m_blocks) {
        blocks[OwnerOf(row, block)].push_back(&block);
    }
    for (const auto& [id, info] : m_infos) {
        blocks[id];
    }
    for (auto& [id, own] : blocks) {
        std::ranges::sort(own, {}, &CBlock::ordinal);
        CSalvagedDatabase& database = m_databases.emplace_back();
        database.info.id = id;
        if (const auto info = m_infos.find(id); info != m_infos.end()) {
            database.info = info->second;
            database.layout = LayoutOfDatabase(database.info.name, database.info.type);
        }
        std::vector<CIndexEntry> misfits;
        for (const CBlock* block : own) {
            PlaceBlock(*block, database, misfits);
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
}

// A record that does not fit is one of another database.
void CSalvage::PlaceBlock(const CBlock& block, CSalvagedDatabase& database,
                          std::vector<CIndexEntry>& misfits) {
    database.listed += std::clamp<qint64>(block.count, 0, kBlockCapacity);
    for (const CIndexEntry& entry : block.entries) {
        PropertyList properties;
        if (!m_records.contains(entry.record) || !Decode(entry.record, properties)) {
            continue;
        }
        const std::optional<qint64> key = KeyOf(properties);
        const bool fits = database.layout != nullptr &&
                          FitsLayout(properties, LayoutOfRecord(properties, *database.layout));
        if (key && !fits) {
            misfits.push_back({*key, entry.record});
        } else if (key && m_placed.insert(entry.record).second) {
            database.entries.push_back({*key, entry.record});
        }
    }
}

// The database of a block is in its row and in the directory. One that is in no list is damaged.
ObjectId CSalvage::OwnerOf(qint64 row, const CBlock& block) const {
    const auto other = m_directory.find(row);
    return !m_infos.contains(block.database) && other != m_directory.end() &&
                   m_infos.contains(other->second.database)
               ? other->second.database
               : block.database;
}

const CRecordLayout* CSalvage::LayoutOfFirst(const std::vector<CIndexEntry>& entries) const {
    PropertyList properties;
    if (entries.empty() || !Decode(entries.front().record, properties)) {
        return nullptr;
    }
    for (const CRecordLayout* layout : kCatalogueDatabases) {
        if (FitsLayout(properties, *layout)) {
            return layout;
        }
    }
    for (const CProfileDatabase& row : kProfileDatabases) {
        if (FitsLayout(properties, row.layout)) {
            return &row.layout;
        }
    }
    return nullptr;
}

void CSalvage::PlaceUnlisted() {
    std::vector<ObjectId> unlisted;
    for (const auto& [record, place] : m_records) {
        if (!m_placed.contains(record)) {
            unlisted.push_back(record);
        }
    }
    std::ranges::sort(unlisted);
    for (const ObjectId record : unlisted) {
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
        if (!FitsLayout(properties, LayoutOfRecord(properties, *database.layout))) {
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
    if (homes == 1 && !(isOfProfile && m_areListsWhole)) {
        return only;
    }
    return gaps == 1 ? withGap : nullptr;
}

bool CSalvage::Decode(ObjectId record, PropertyList& properties) const {
    const std::optional<CScannedRow> row = m_scan.RowAt(m_records.at(record));
    const auto* body = row && row->values.size() == 2 ? At<QByteArray>(*row, 1) : nullptr;
    return body != nullptr && DecodeRecord(*body, properties);
}

bool CSalvage::ReadRecord(ObjectId record, const CRecordLayout& layout,
                          PropertyList& properties) const {
    PropertyList stored;
    if (!Decode(record, stored)) {
        return false;
    }
    CItemRecord item(LayoutOfRecord(stored, layout));
    if (!item.SetProperties(std::move(stored))) {
        return false;
    }
    properties = item.GetProperties();
    return true;
}

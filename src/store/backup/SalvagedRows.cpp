#include "store/backup/SalvagedRows.h"

#include "store/engine/RecordCodec.h"
#include "store/engine/VolumeIdentity.h"

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
}  // namespace

EPlatformError CSalvagedRows::Read(const QString& path, const CopyProgress& progress) {
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
    return kErrorSuccess;
}

void CSalvagedRows::TakeRow(const CRowPlace& place, const CScannedRow& row) {
    if (row.isOfIndex) {
        TakeIndexRow(place, row);
    } else if (row.id > 0 && !row.values.empty() &&
               std::holds_alternative<std::monostate>(row.values[0])) {
        TakeTableRow(place, row);
    }
}

// The tables are told apart by their columns, of which the first is the row's identifier.
void CSalvagedRows::TakeTableRow(const CRowPlace& place, const CScannedRow& row) {
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

void CSalvagedRows::TakeIndexRow(const CRowPlace& place, const CScannedRow& row) {
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

bool CSalvagedRows::Decode(ObjectId record, PropertyList& properties) const {
    const auto place = m_records.find(record);
    const std::optional<CScannedRow> row =
        place == m_records.end() ? std::nullopt : m_scan.RowAt(place->second);
    const auto* body = row && row->values.size() == 2 ? At<QByteArray>(*row, 1) : nullptr;
    return body != nullptr && DecodeRecord(*body, properties);
}

bool CSalvagedRows::IsInOrder(ObjectId database, const CSalvagedBlock& listed) const {
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

ObjectId CSalvagedRows::HomeInHistory(ObjectId record) const {
    const auto next = m_history.upper_bound(record);
    if (next == m_history.begin()) {
        return 0;
    }
    const auto& [first, run] = *std::prev(next);
    return record - first < run.count ? run.database : 0;
}

// Entries of a diary as lists keep them: each with the identifier of its record.
#pragma once

#include <utility>
#include <vector>

#include "store/CatalogueLists.h"
#include "store/ItemDatabase.h"

/// Unlike a position, the record stays the same when other entries change; unlike the content, it
/// distinguishes equal entries.
template <typename Entry>
struct CListed {
    ObjectId record = 0;
    Entry entry;
};
template <typename Entry>
using ListedEntries = std::vector<CListed<Entry>>;

/// The entries of one query in stored order.
template <typename Entry>
struct CEntryRange {
    ListedEntries<Entry> entries;
    CLeftOut leftOut;
};

/// The entries of a query, the first `capacity` of them.
template <typename Entry>
CEntryRange<Entry> ReadEntries(CItemDatabase<Entry>& diary, const CListQuery& query,
                               int capacity = kNoCapacity) {
    CEntryRange<Entry> range;
    range.leftOut = diary.ReadRecords(query, [&](ObjectId record, PropertyList& properties) {
        Entry entry;
        if (!entry.SetProperties(std::move(properties))) {
            return ETake::Damaged;
        }
        range.entries.push_back({record, std::move(entry)});
        return std::ssize(range.entries) < capacity ? ETake::Taken : ETake::Last;
    });
    return range;
}

/// The listed entries of these rows, in the order of `rows`.
template <typename Entry>
ListedEntries<Entry> EntriesOf(const ListedEntries<Entry>& listed, const std::vector<int>& rows) {
    ListedEntries<Entry> entries;
    entries.reserve(rows.size());
    for (const int row : rows) {
        entries.push_back(listed[row]);
    }
    return entries;
}

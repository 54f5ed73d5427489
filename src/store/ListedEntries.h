// Entries of a diary as lists remember them: each with the record that holds it.
#pragma once

#include <utility>
#include <vector>

#include "store/CatalogueLists.h"
#include "store/ItemDatabase.h"

/// The record outlives every change of other entries, which positions do not, and tells equal
/// entries apart, which contents do not.
template <typename Entry>
struct CListed {
    ObjectId record = 0;
    Entry entry;
};
template <typename Entry>
using ListedEntries = std::vector<CListed<Entry>>;

/// What a list reads at once, in stored order.
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

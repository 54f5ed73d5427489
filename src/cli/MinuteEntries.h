// Diary entries named by the minute of --date and --time.
#pragma once

#include "cli/Arguments.h"
#include "store/ListedEntries.h"

/// The entries of that minute in stored order. No other part of the diary is read.
template <typename Entry>
ListedEntries<Entry> ReadMinute(CItemDatabase<Entry>& diary, const CArguments& arguments) {
    const QDate day = arguments.Date("--date");
    const QTime time = arguments.Time("--time");
    return ReadEntries(diary, {ToFileTime(day, time), LastMomentOfMinute(day, time)}).entries;
}

// The diary entries of the minute given by --date and --time.
#pragma once

#include "cli/Arguments.h"
#include "store/ListedEntries.h"

/// In stored order; nothing else of the diary is read.
template <typename Entry>
ListedEntries<Entry> ReadMinute(CItemDatabase<Entry>& diary, const CArguments& arguments) {
    const QDate day = arguments.Date("--date");
    const QTime time = arguments.Time("--time");
    return ReadEntries(diary, {ToFileTime(day, time), LastMomentOfMinute(day, time)}).entries;
}

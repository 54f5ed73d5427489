// The commands that the three diaries share: what is selected in a list is changed or deleted by
// its records, whose positions are looked up when their turn comes.
#pragma once

#include "app/ListCommands.h"
#include "store/ListedEntries.h"

/// The texts of a command on selected entries.
struct CEntryCommand {
    CSelectionTexts selection;
    CConfirmTexts confirm;
    const char* failure;
};

/// False after a message when the selection does not fit, or when the question is not answered
/// with Yes. A single entry is asked about by its name, if it has one.
template <typename Entry>
bool MayRun(const CEntryCommand& command, const ListedEntries<Entry>& selected) {
    const auto count = static_cast<int>(selected.size());
    if (!CheckSelection(command.selection, count)) {
        return false;
    }
    if constexpr (requires(const Entry& entry) { entry.GetName(); }) {
        return ConfirmFor(command.confirm, count, {selected.front().entry.GetName()});
    } else {
        return ConfirmFor(command.confirm, count, {});
    }
}

/// What a deletion does after an entry that stays.
enum class EAfterFailure {
    Stop,  ///< ends with the command's message
    GoOn,  ///< shows the command's message for each, and deletes the others
};

/// The identifiers in the order listed.
template <typename Entry>
std::vector<ObjectId> RecordsOf(const ListedEntries<Entry>& listed) {
    std::vector<ObjectId> records;
    records.reserve(listed.size());
    for (const CListed<Entry>& each : listed) {
        records.push_back(each.record);
    }
    return records;
}

/// Calls `act` with the position of each record as one unit of work, see ActOnEach. A record that
/// is gone is a failure.
int ActOnRecords(CItemDatabaseBase& diary, const std::vector<ObjectId>& records,
                 const std::function<bool(int position)>& act, const char* failure);

/// As one unit of work, without asking. Returns how many are gone.
int DeleteRecords(CItemDatabaseBase& diary, const std::vector<ObjectId>& records,
                  const char* failure, EAfterFailure afterFailure);

/// Checks the selection, asks and deletes. Returns how many are gone.
template <typename Entry>
int DeleteEntries(CItemDatabase<Entry>& diary, const ListedEntries<Entry>& selected,
                  const CEntryCommand& command, EAfterFailure afterFailure) {
    return MayRun(command, selected)
               ? DeleteRecords(diary, RecordsOf(selected), command.failure, afterFailure)
               : 0;
}

enum class EReplaced {
    Yes,
    NoRecord,    ///< it is gone; nothing has been shown
    NotWritten,  ///< the message of the failed write has been shown
};

/// Writes `entry` into a record of the diary.
template <typename Entry>
[[nodiscard]] EReplaced ReplaceEntry(CItemDatabase<Entry>& diary, ObjectId record,
                                     const Entry& entry) {
    const int position = diary.PositionOf(record);
    if (position < 0) {
        return EReplaced::NoRecord;
    }
    return diary.Write(position, entry) ? EReplaced::Yes : EReplaced::NotWritten;
}

/// Reads each record, lets `change` change it, and writes it; stops at the first failure. Returns
/// how many were changed.
template <typename Entry>
int ChangeEntries(CItemDatabase<Entry>& diary, const ListedEntries<Entry>& selected,
                  const std::function<void(Entry&)>& change, const char* failure) {
    return ActOnRecords(
        diary, RecordsOf(selected),
        [&](int position) {
            Entry entry;
            if (!diary.ReadQuietly(position, entry)) {
                return false;
            }
            change(entry);
            return diary.Write(position, entry);
        },
        failure);
}

// The commands that the three diaries share. Selected entries are changed and deleted by record
// identifier; each position is looked up only when it is needed, since every write changes them.
#pragma once

#include "app/ListCommands.h"
#include "store/ListedEntries.h"
#include "store/Step.h"

/// The texts of a command on selected entries.
struct CEntryCommand {
    CSelectionTexts selection;
    CConfirmTexts confirm;
    const char* failure;
    QLatin1StringView step;  ///< "delete", for the step's name
    QLatin1StringView one;   ///< "a weight", for an entry without a name
    QLatin1StringView many;  ///< "weights"
};

/// Checks the selection and asks. False after a message when the selection does not fit, or unless
/// the answer is Yes. The question about a single entry names it, if it has a name.
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

/// "delete of Egg", "delete of 2 weights".
template <typename Entry>
QString StepNameOf(const CEntryCommand& command, const ListedEntries<Entry>& selected) {
    const auto count = static_cast<int>(selected.size());
    if constexpr (requires(const Entry& entry) { entry.GetName(); }) {
        return StepName(command.step, count, selected.front().entry.GetName(), command.many);
    } else {
        return StepName(command.step, count, command.one, command.many);
    }
}

/// What a deletion does when an entry cannot be deleted.
enum class EAfterFailure {
    Stop,      ///< shows the command's message and ends
    Continue,  ///< shows the command's message for each such entry, and deletes the others
};

/// The record identifiers in the order listed.
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
/// no longer exists is a failure.
int ActOnRecords(CItemDatabaseBase& diary, const std::vector<ObjectId>& records,
                 const std::function<bool(int position)>& act, const char* failure);

/// Deletes the records as one unit of work, without asking. Returns how many were deleted.
int DeleteRecords(CItemDatabaseBase& diary, const std::vector<ObjectId>& records,
                  const char* failure, EAfterFailure afterFailure);

/// Checks the selection, asks and deletes. Returns how many were deleted.
template <typename Entry>
int DeleteEntries(CItemDatabase<Entry>& diary, const ListedEntries<Entry>& selected,
                  const CEntryCommand& command, EAfterFailure afterFailure) {
    if (!MayRun(command, selected)) {
        return 0;
    }
    const CStep step(diary.GetStore(), StepNameOf(command, selected));
    return DeleteRecords(diary, RecordsOf(selected), command.failure, afterFailure);
}

enum class EReplaced {
    Yes,
    NoRecord,    ///< it no longer exists; nothing has been shown
    NotWritten,  ///< the message of the failed write has been shown
};

/// Overwrites a record of the diary with `entry`.
template <typename Entry>
[[nodiscard]] EReplaced ReplaceEntry(CItemDatabase<Entry>& diary, ObjectId record,
                                     const Entry& entry) {
    const int position = diary.PositionOf(record);
    if (position < 0) {
        return EReplaced::NoRecord;
    }
    return diary.Write(position, entry) ? EReplaced::Yes : EReplaced::NotWritten;
}

/// Reads each record, passes it to `change`, and writes it; stops at the first failure. Returns how
/// many were changed. `place` as in DoneText.
template <typename Entry>
int ChangeEntries(CItemDatabase<Entry>& diary, const ListedEntries<Entry>& selected,
                  const std::function<void(Entry&)>& change, const CEntryCommand& command,
                  const QString& place = {}) {
    const QString name = StepNameOf(command, selected);
    CStep step(diary.GetStore(), name);
    step.SetStatusText(DoneText(name, place));
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
        command.failure);
}

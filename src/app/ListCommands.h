// The pattern that every list command follows: nothing selected, exactly one needed, confirm one
// by name or several by count, act on each and stop at the first failure.
#pragma once

#include <QLatin1StringView>
#include <QString>
#include <functional>
#include <initializer_list>
#include <vector>

#include "platform/Messages.h"
#include "store/UnitOfWork.h"

/// "Please select entry to edit." and "Please select only one entry to edit.".
struct CSelectionTexts {
    const char* none;
    const char* several = nullptr;  ///< null when several are welcome
};

/// Shows the text that applies and returns false when the selection does not fit the command.
bool CheckSelection(const CSelectionTexts& texts, int selected);

/// The questions before a command on several items.
struct CConfirmTexts {
    const char* one;      ///< with the item's texts
    const char* several;  ///< with the count, "%d"
};
bool ConfirmFor(const CConfirmTexts& texts, int selected, std::span<const CTextArgument> itemTexts);
bool ConfirmFor(const CConfirmTexts& texts, int selected,
                std::initializer_list<CTextArgument> itemTexts);

/// Calls `act` on each index as one unit of work (see RunAsUnit), under a wait cursor when there
/// are several. Where the unit fails it ends at the first index that does, which shows `failure`
/// unless that is empty; what was done before it stays. Returns how many succeeded.
int ActOnEach(CRecordStore& store, const std::vector<int>& indexes,
              const std::function<bool(int index)>& act, const QString& failure);

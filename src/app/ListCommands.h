// The steps of every list command: check the selection, confirm one item by name or several by
// count, act on each and stop at the first failure.
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
    const char* several = nullptr;  ///< null for a command that takes several
};

/// Shows the text that applies and returns false when the selection does not fit the command.
bool CheckSelection(const CSelectionTexts& texts, int selected);

/// The question before a command.
struct CConfirmTexts {
    const char* one;      ///< "%s" are the item's texts
    const char* several;  ///< "%d" is the count
};
/// True for Yes.
bool ConfirmFor(const CConfirmTexts& texts, int selected, std::span<const CTextArgument> itemTexts);
bool ConfirmFor(const CConfirmTexts& texts, int selected,
                std::initializer_list<CTextArgument> itemTexts);

/// The name of a step of the history: "delete of Egg".
QString StepName(QLatin1StringView command, const QString& item);
/// "delete of Egg" for one item, "delete of 3 entries" for several.
QString StepName(QLatin1StringView command, int count, const QString& item,
                 QLatin1StringView items);

/// Calls `act` on each index as one unit of work (see RunAsUnit), under a wait cursor when there
/// are several. Stops at the first index that fails and shows `failure` unless it is empty; what
/// was done before it stays, and the step then tells nothing. Returns how many succeeded.
int ActOnEach(CRecordStore& store, const std::vector<int>& indexes,
              const std::function<bool(int index)>& act, const QString& failure);

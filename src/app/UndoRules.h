// Undo and redo, without windows.
#pragma once

#include "store/Database.h"

enum class EUndo { Undo, Redo };

/// Reads the history. False after a message when it cannot be read.
bool ReadHistory(CDatabase& database);
/// The step to undo or redo next, in a scope of the history or in all; none when ReadHistory fails.
std::optional<CHistoryStep> NextStep(CDatabase& database, EUndo direction,
                                     std::optional<qint64> scope);
/// "There is nothing to undo."
QString NothingText(EUndo direction);
/// "Undone: delete of 3 entries."
QString RevertedText(const CHistoryStep& step);
/// Undoes or redoes a step, the next one of the catalogue or of the open profile. Asks first when
/// that cannot be reversed. Tells RevertedText. False, after a message unless the answer was No,
/// when nothing was changed.
bool RevertStep(CDatabase& database, const CHistoryStep& step);

/// NextStep and RevertStep in a scope, with the message of NothingText. True when anything was
/// changed.
bool RevertNext(CDatabase& database, EUndo direction, qint64 scope);
/// The name of the step that RevertNext would take; empty when there is none.
QString NextName(CDatabase& database, EUndo direction, qint64 scope);

/// Asks and empties the history of a scope. False when the answer was No, or after a message.
bool ClearHistory(CDatabase& database, qint64 scope);

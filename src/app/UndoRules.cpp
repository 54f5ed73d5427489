#include "app/UndoRules.h"

#include "platform/Messages.h"
#include "store/Step.h"

using namespace Qt::StringLiterals;

namespace {
/// All texts that differ by direction.
struct CUndoTexts {
    const char* nothing;
    const char* done;
    const char* oneWay;
    const char* changed;
    const char* failed;
};
constexpr CUndoTexts kUndoTexts = {
    "There is nothing to undo.", "Undone: %s.", "This cannot be redone. Do you want to go on?",
    "Cannot undo %s: what it stored has been changed since. Nothing was changed.",
    "Cannot undo %s. Error=%d"};
constexpr CUndoTexts kRedoTexts = {
    "There is nothing to redo.", "Redone: %s.", kGoOnWithoutUndo,
    "Cannot redo %s: what it stored has been changed since. Nothing was changed.",
    "Cannot redo %s. Error=%d"};

const CUndoTexts& TextsOf(const CHistoryStep& step) {
    return step.isUndone ? kRedoTexts : kUndoTexts;
}
}  // namespace

bool ReadHistory(CDatabase& database) {
    CRecordStore& store = database.GetStore();
    if (!store.LoadHistory()) {
        store.ShowFailure(FormatText("Cannot read the history. Error=%d"_L1,
                                     {static_cast<int>(store.GetLastError())}));
        return false;
    }
    return true;
}

std::optional<CHistoryStep> NextStep(CDatabase& database, EUndo direction,
                                     std::optional<qint64> scope) {
    CHistory& history = database.GetStore().History();
    return direction == EUndo::Undo ? history.NextUndo(scope) : history.NextRedo(scope);
}

QString NothingText(EUndo direction) {
    return QString::fromLatin1((direction == EUndo::Undo ? kUndoTexts : kRedoTexts).nothing);
}

QString RevertedText(const CHistoryStep& step) {
    return FormatText(QLatin1StringView(TextsOf(step).done), {step.name});
}

bool RevertStep(CDatabase& database, const CHistoryStep& step) {
    CRecordStore& store = database.GetStore();
    const CUndoTexts& texts = TextsOf(step);
    if (store.History().IsOneWay(step) && !AskYesNo(QString::fromLatin1(texts.oneWay))) {
        return false;
    }
    EReverted reverted = EReverted::Failed;
    {
        const CWaitCursor wait;
        reverted = database.Revert(step);
    }
    switch (reverted) {
        case EReverted::Done:
            store.ShowStatus(RevertedText(step));
            return true;
        case EReverted::Changed:
            ShowMessage(FormatText(QLatin1StringView(texts.changed), {step.name}),
                        EMessageIcon::Warning);
            return false;
        case EReverted::Damaged:
            ShowHistoryNotices(store);
            return false;
        case EReverted::Failed:
            store.ShowFailure(FormatText(QLatin1StringView(texts.failed),
                                         {step.name, static_cast<int>(store.GetLastError())}));
            return false;
    }
    return false;
}

bool RevertNext(CDatabase& database, EUndo direction, qint64 scope) {
    if (!ReadHistory(database)) {
        return false;
    }
    const std::optional<CHistoryStep> step = NextStep(database, direction, scope);
    ShowHistoryNotices(database.GetStore());
    if (!step) {
        ShowMessage(NothingText(direction), EMessageIcon::Information);
    }
    return step && RevertStep(database, *step);
}

QString NextName(CDatabase& database, EUndo direction, qint64 scope) {
    const std::optional<CHistoryStep> step = NextStep(database, direction, scope);
    return step ? step->name : QString();
}

bool ClearHistory(CDatabase& database, qint64 scope) {
    if (!AskYesNo(u"Nothing that was done here until now can be undone afterwards, and what the "
                  u"history keeps "
                  "of it is removed from the data file. Are you sure?"_s)) {
        return false;
    }
    if (!database.GetStore().ClearHistory(scope)) {
        database.GetStore().ShowFailure(u"Cannot clear the history."_s);
        return false;
    }
    ShowHistoryNotices(database.GetStore());
    return true;
}

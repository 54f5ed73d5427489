#include "app/ListCommands.h"

#include <optional>

#include "store/RecordStore.h"

using namespace Qt::StringLiterals;

bool CheckSelection(const CSelectionTexts& texts, int selected) {
    if (selected == 0) {
        ShowMessage(QString::fromLatin1(texts.none), EMessageIcon::Information);
        return false;
    }
    if (selected > 1 && texts.several != nullptr) {
        ShowMessage(QString::fromLatin1(texts.several), EMessageIcon::Information);
        return false;
    }
    return true;
}

bool ConfirmFor(const CConfirmTexts& texts, int selected,
                std::initializer_list<CTextArgument> itemTexts) {
    return ConfirmFor(texts, selected, std::span(itemTexts.begin(), itemTexts.size()));
}

bool ConfirmFor(const CConfirmTexts& texts, int selected,
                std::span<const CTextArgument> itemTexts) {
    if (selected == 1) {
        return AskYesNo(FormatText(QLatin1StringView(texts.one), itemTexts));
    }
    return AskYesNo(FormatText(QLatin1StringView(texts.several), {selected}));
}

QString StepName(QLatin1StringView command, const QString& item) {
    return FormatText("%s of %s"_L1, {QString(command), item});
}

QString StepName(QLatin1StringView command, int count, const QString& item,
                 QLatin1StringView items) {
    return count == 1 ? StepName(command, item)
                      : FormatText("%s of %d %s"_L1, {QString(command), count, QString(items)});
}

int ActOnEach(CRecordStore& store, const std::vector<int>& indexes,
              const std::function<bool(int index)>& act, const QString& failure) {
    std::size_t succeeded = 0;
    {
        std::optional<CWaitCursor> wait;
        if (indexes.size() > 1) {
            wait.emplace();
        }
        RunAsUnit(store, [&] {
            succeeded = 0;
            while (succeeded < indexes.size() && act(indexes[succeeded])) {
                ++succeeded;
            }
            return succeeded == indexes.size();
        });
    }
    if (succeeded < indexes.size()) {
        store.SilenceStep();
        if (!failure.isEmpty()) {
            ShowMessage(failure, EMessageIcon::Information);
        }
    }
    return static_cast<int>(succeeded);
}

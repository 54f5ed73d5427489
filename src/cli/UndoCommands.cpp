// velmora-cli undo and redo
#include "app/UndoRules.h"
#include "cli/Commands.h"
#include "cli/CommonArguments.h"
#include "cli/TableOutput.h"
#include "platform/Messages.h"
#include "store/Step.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
constexpr COption kListOption = {"--list", EValue::None, "",
                                 "list the steps instead, newest first"};
constexpr COption kCatalogueOption = {"--catalogue", EValue::None, "",
                                      "only changes of the catalogue"};
constexpr COption kDiariesOption = {.name = "--profile",
                                    .kind = EValue::Text,
                                    .value = "NAME",
                                    .help = "only changes of this profile's diaries",
                                    .rival = "--catalogue"};
constexpr COption kOptions[] = {kListOption, kCatalogueOption, kDiariesOption};

/// The scope of --catalogue or --profile, nothing without either; false after a message.
bool TakeScope(CCommandContext& context, std::optional<qint64>& scope) {
    if (context.arguments.Has("--catalogue")) {
        scope = kCatalogueScope;
    } else if (context.arguments.Has("--profile")) {
        if (!LoadProfileArgument(context)) {
            return false;
        }
        scope = context.doc.Database().Profiles().GetId();
    }
    return true;
}

void PrintStep(CDatabase& database, const CHistoryStep& step) {
    PrintRow({step.name, database.Profiles().NameOf(step.scope)});
}

void PrintSteps(CDatabase& database, EUndo direction, std::optional<qint64> scope) {
    PrintRow({u"step"_s, u"profile"_s});
    std::vector<CHistoryStep> steps = database.GetStore().History().ListSteps();
    std::ranges::reverse(steps);
    for (const CHistoryStep& step : steps) {
        const bool isInScope = !scope || *scope == step.scope;
        if (isInScope && step.isUndone == (direction == EUndo::Redo)) {
            PrintStep(database, step);
        }
    }
}

bool Run(CCommandContext& context, EUndo direction) {
    CDatabase& database = context.doc.Database();
    std::optional<qint64> scope;
    if (!TakeScope(context, scope) || !ReadHistory(database)) {
        return false;
    }
    if (context.arguments.Has("--list")) {
        PrintSteps(database, direction, scope);
        ShowHistoryNotices(database.GetStore());
        return true;
    }
    const std::optional<CHistoryStep> step = NextStep(database, direction, scope);
    if (!step) {
        ShowHistoryNotices(database.GetStore());
        ShowMessage(NothingText(direction));
        return false;
    }
    const bool isLoaded = step->scope == kCatalogueScope || scope ||
                          LoadProfileNamed(context.doc, database.Profiles().NameOf(step->scope));
    if (!isLoaded || !RevertStep(database, *step)) {
        return false;
    }
    ShowMessage(RevertedText(*step), EMessageIcon::Result);
    return true;
}

bool Undo(CCommandContext& context) {
    return Run(context, EUndo::Undo);
}

bool Redo(CCommandContext& context) {
    return Run(context, EUndo::Redo);
}

// Without a volume there is nothing to undo: none is created.
constexpr CCommand kCommands[] = {
    {"undo", "run", "", kOptions, EAccess::Reads, "take back what a command changed", Undo},
    {"redo", "run", "", kOptions, EAccess::Reads, "change again what undo took back", Redo},
};
}  // namespace

std::span<const CCommand> UndoCommands() {
    return kCommands;
}

// velmora-cli: the core without windows, for scripts, back-ups and tests.
#include <QCoreApplication>
#include <QStringList>
#include <algorithm>
#include <cstdio>
#include <vector>

#include "app/VelmoraDoc.h"
#include "cli/Commands.h"
#include "cli/ConsoleMessages.h"
#include "cli/TableOutput.h"
#include "platform/VolumePlace.h"

using namespace Qt::StringLiterals;

namespace {
std::vector<CCommand> AllCommands() {
    std::vector<CCommand> commands;
    for (const std::span<const CCommand> group :
         {ProfileCommands(), CatalogueCommands(), CategoryCommands(), DietCommands(),
          WeightCommands(), ExerciseCommands(), ReportCommands()}) {
        commands.insert(commands.end(), group.begin(), group.end());
    }
    return commands;
}

/// The command of a group that has no other; null when there is none or several.
const CCommand* OnlyCommandOf(const std::vector<CCommand>& commands, const QString& group) {
    const auto isOfGroup = [&](const CCommand& command) {
        return group == QLatin1StringView(command.group);
    };
    const auto first = std::ranges::find_if(commands, isOfGroup);
    return first != commands.end() &&
                   std::find_if(first + 1, commands.end(), isOfGroup) == commands.end()
               ? &*first
               : nullptr;
}

QString UsageLine(const CCommand& command) {
    const bool isOnly = OnlyCommandOf(AllCommands(), QLatin1StringView(command.group)) != nullptr;
    return u"    "_s + QLatin1StringView(command.group) + u' ' +
           (isOnly ? QString() : QLatin1StringView(command.name) + u' ') +
           QLatin1StringView(command.usage);
}

/// Of the commands of a group; of all when there is no such group.
void PrintUsage(std::FILE* stream, const QString& group = QString()) {
    PrintLine(stream, u"usage: velmora-cli [--volume FILE] COMMAND ..."_s);
    PrintLine(stream, u"Dates are ISO (2026-05-31), values in kg, cm and kcal. Commands:"_s);
    const std::vector<CCommand> commands = AllCommands();
    const auto isOfGroup = [&](const CCommand& command) {
        return group == QLatin1StringView(command.group);
    };
    const bool isGroup = std::ranges::any_of(commands, isOfGroup);
    for (const CCommand& command : commands) {
        if (!isGroup || isOfGroup(command)) {
            PrintLine(stream, UsageLine(command));
        }
    }
}

int Refuse(const CCommand& command, const QString& error) {
    PrintLine(stderr, u"velmora-cli: "_s + error);
    PrintLine(stderr, u"usage:"_s);
    PrintLine(stderr, UsageLine(command));
    return kExitUsage;
}

int Run(const CCommand& command, const QStringList& words, const QString& volumePath,
        CConsoleMessages& messages) {
    CArguments arguments(words, command.options, command.wordCount);
    if (!arguments.GetError().isEmpty()) {
        return Refuse(command, arguments.GetError());
    }
    const bool wantsYes =
        std::ranges::any_of(command.options, [](const COptionDescription& option) {
            return QLatin1StringView(option.name) == QLatin1StringView(kYesOption.name);
        });
    if (!wantsYes || arguments.Has(kYesOption.name)) {
        messages.AnswerYes();
    }
    CVelmoraDoc doc(volumePath);
    if (!doc.OpenCatalogue()) {
        return kExitRefused;
    }
    CCommandContext context{doc, arguments, command.kind};
    const bool done = command.run(context);
    if (!arguments.GetError().isEmpty()) {
        return Refuse(command, arguments.GetError());
    }
    return done && FinishOutput() ? kExitDone : kExitRefused;
}
}  // namespace

int main(int argc, char* argv[]) {
    const QCoreApplication application(argc, argv);
    CConsoleMessages messages;
    QStringList words = QCoreApplication::arguments().mid(1);
    QString volumePath;
    if (words.size() >= 2 && words.first() == "--volume"_L1) {
        volumePath = words[1];
        words = words.mid(2);
    } else {
        volumePath = DefaultVolumePath(QCoreApplication::applicationFilePath());
    }
    if (!words.isEmpty() && words.last() == "--help"_L1) {
        PrintUsage(stdout, words.first());
        return kExitDone;
    }
    if (words.size() == 1 && words.first() == "--version"_L1) {
        PrintLine(stdout, u"velmora-cli "_s + QStringLiteral(VELMORA_VERSION));
        return kExitDone;
    }
    const std::vector<CCommand> commands = AllCommands();
    if (const CCommand* only = OnlyCommandOf(commands, words.value(0))) {
        const bool isNamed = words.value(1) == QLatin1StringView(only->name);
        return Run(*only, words.mid(isNamed ? 2 : 1), volumePath, messages);
    }
    // "categories --kind foods list" reads as "categories list --kind foods".
    if (words.size() >= 4 && words[1] == "--kind"_L1) {
        words.move(3, 1);
    }
    for (const CCommand& command : commands) {
        if (words.value(0) == QLatin1StringView(command.group) &&
            words.value(1) == QLatin1StringView(command.name)) {
            return Run(command, words.mid(2), volumePath, messages);
        }
    }
    PrintUsage(stderr, words.value(0));
    return kExitUsage;
}

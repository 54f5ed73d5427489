#include <algorithm>

#include "cli/Commands.h"
#include "cli/NearWord.h"

using namespace Qt::StringLiterals;

namespace {
std::vector<const CCommand*> CommandsOf(const QString& group) {
    std::vector<const CCommand*> commands;
    for (const CCommand& command : AllCommands()) {
        if (group == QLatin1StringView(command.group)) {
            commands.push_back(&command);
        }
    }
    return commands;
}

QStringList GroupNames() {
    QStringList names = {u"help"_s};
    for (const CCommand& command : AllCommands()) {
        names.append(QLatin1StringView(command.group));
    }
    return names;
}

/// Removes the command's name from the words; in a group with one command it is optional.
void TakeName(CNamedCommand& named, qsizetype from) {
    const std::vector<const CCommand*> commands = CommandsOf(named.group);
    const qsizetype at = FindWord(named.words, from, named.Options());
    const QString name = named.words.value(at);
    const auto found = std::ranges::find_if(commands, [&](const CCommand* command) {
        return !name.isEmpty() && name == QLatin1StringView(command->name);
    });
    if (found != commands.end()) {
        named.command = *found;
        named.words.removeAt(at);
    } else if (commands.size() == 1) {
        named.command = commands.front();
    } else if (at >= 0) {
        QStringList names;
        for (const CCommand* command : commands) {
            names.append(QLatin1StringView(command->name));
        }
        named.error = u"unknown command '%1 %2'"_s.arg(named.group, name) + DidYouMean(name, names);
    }
}
}  // namespace

const std::vector<CCommand>& AllCommands() {
    static const std::vector<CCommand> all = [] {
        std::vector<CCommand> commands;
        for (const std::span<const CCommand> group :
             {ProfileCommands(), CatalogueCommands(), CategoryCommands(), ShareCommands(),
              SearchCommands(), DietCommands(), WeightCommands(), ExerciseCommands(),
              ReportCommands(), UndoCommands(), BackupCommands()}) {
            commands.insert(commands.end(), group.begin(), group.end());
        }
        return commands;
    }();
    return all;
}

std::vector<COption> CNamedCommand::Options() const {
    if (command != nullptr) {
        return {command->options.begin(), command->options.end()};
    }
    std::vector<COption> options;
    for (const CCommand* candidate : CommandsOf(group)) {
        for (COption option : candidate->options) {
            option.need = ENeed::Optional;
            option.rival = nullptr;
            options.push_back(option);
        }
    }
    return options;
}

CNamedCommand FindCommand(QStringList words) {
    CNamedCommand named;
    const qsizetype at = FindWord(words, 0, {});
    if (at >= 0 && words[at] == "help"_L1) {
        words.removeAt(at);
        words.prepend(u"--help"_s);
        return FindCommand(words);
    }
    named.group = at < 0 ? QString() : words.takeAt(at);
    named.words = words;
    if (at >= 0 && CommandsOf(named.group).empty()) {
        named.error =
            u"unknown command '%1'"_s.arg(named.group) + DidYouMean(named.group, GroupNames());
    } else if (at >= 0) {
        TakeName(named, at);
    }
    return named;
}

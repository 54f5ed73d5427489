#include "cli/Help.h"

#include "cli/HelpTexts.h"
#include "cli/TableOutput.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int kLineLength = 79;
constexpr int kNameColumn = 34;    // characters, in a list of commands
constexpr int kOptionColumn = 24;  // characters, in a list of options
const QString kIndent(4, u' ');
const auto kSeeHelp = u"\"velmora-cli help COMMAND\" explains a command, --help lists them all."_s;

/// "--height CM"
QString OptionText(const COption& option) {
    const QString name = QLatin1StringView(option.name);
    return option.kind == EValue::None ? name : name + u' ' + QLatin1StringView(option.value);
}

QString NameAndWords(const CCommand& command) {
    return (NameOf(command) + u' ' + QLatin1StringView(command.words)).trimmed();
}

/// Wraps lines between options.
void PrintUsageOf(std::FILE* stream, const CCommand& command) {
    QString line = kIndent + NameAndWords(command);
    for (const COption& option : command.options) {
        const QString item = UsageItem(option, OptionText(option));
        if (line.size() + 1 + item.size() > kLineLength) {
            PrintLine(stream, line);
            line = kIndent + kIndent + item;
        } else {
            line += u' ' + item;
        }
    }
    PrintLine(stream, line);
}

void PrintOption(const COption& option) {
    PrintLine(stdout,
              kIndent + OptionText(option).leftJustified(kOptionColumn) + u"  "_s + HelpOf(option));
}

void PrintHelpOf(const CCommand& command) {
    PrintLine(stdout, NameOf(command) + u": "_s + QLatin1StringView(command.help));
    PrintUsageOf(stdout, command);
    for (const COption& option : command.options) {
        PrintOption(option);
    }
}

bool IsNamed(const CCommand& command, const CNamedCommand& named) {
    return named.command != nullptr ? named.command == &command
                                    : named.group == QLatin1StringView(command.group);
}

void PrintList() {
    PrintLine(stdout, u"usage: velmora-cli [--volume FILE] COMMAND ..."_s);
    PrintLine(stdout, u"Dates are ISO (2026-05-31), values in kg, cm and kcal. Commands:"_s);
    for (const CCommand& command : AllCommands()) {
        PrintLine(stdout, kIndent + NameAndWords(command).leftJustified(kNameColumn) + u"  "_s +
                              QLatin1StringView(command.help));
    }
    PrintLine(stdout, u"Options of every command:"_s);
    for (const COption& option : kCommonOptions) {
        PrintOption(option);
    }
    PrintLine(stdout, kSeeHelp);
}
}  // namespace

void PrintUsage(const CNamedCommand& named) {
    PrintLine(stderr, kSeeHelp);
    for (const CCommand& command : AllCommands()) {
        if (IsNamed(command, named)) {
            PrintUsageOf(stderr, command);
        }
    }
}

void PrintHelp(const CNamedCommand& named) {
    if (named.group.isEmpty()) {
        PrintList();
        return;
    }
    for (const CCommand& command : AllCommands()) {
        if (IsNamed(command, named)) {
            PrintHelpOf(command);
        }
    }
}

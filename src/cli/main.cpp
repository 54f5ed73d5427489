// velmora-cli: the core without windows, for scripts and tests.
#include <QCoreApplication>
#include <algorithm>

#include "app/VelmoraDoc.h"
#include "cli/Commands.h"
#include "cli/CommonArguments.h"
#include "cli/ConsoleMessages.h"
#include "cli/Help.h"
#include "cli/TableOutput.h"
#include "platform/Process.h"
#include "platform/VolumePlace.h"

using namespace Qt::StringLiterals;

namespace {
int Refuse(const CNamedCommand& named, const QString& error) {
    PrintLine(stderr, u"velmora-cli: "_s + error);
    PrintUsage(named);
    return kExitUsage;
}

int RefusePath(const QString& path) {
    PrintLine(stderr, u"velmora-cli: "_s + path + u" is not valid UTF-8"_s);
    return kExitUsage;
}

int Run(const CCommand& command, const CArguments& arguments, CConsoleMessages& messages) {
    const QString volume =
        arguments.Text("--volume", DefaultVolumePath(QCoreApplication::applicationFilePath()));
    if (HasLostBytes(volume)) {
        return RefusePath(volume);
    }
    if (command.access == EAccess::Reads && !CheckHasData(volume)) {
        return kExitRefused;
    }
    const bool wantsYes = std::ranges::any_of(command.options, [](const COption& option) {
        return QLatin1StringView(option.name) == QLatin1StringView(kYesOption.name);
    });
    if (!wantsYes || arguments.Has(kYesOption.name)) {
        messages.AnswerYes();
    }
    CVelmoraDoc doc(volume);
    CCommandContext context{doc, arguments, volume, command.kind};
    if (command.access == EAccess::File) {
        return command.run(context) && FinishOutput() ? kExitDone : kExitRefused;
    }
    if (!doc.OpenCatalogue()) {
        return kExitRefused;
    }
    doc.Database().StartBackups();
    const bool done = command.run(context);
    const bool isCutShort = doc.Database().GetStore().TellLoss();
    return done && !isCutShort && FinishOutput() ? kExitDone : kExitRefused;
}
}  // namespace

int main(int argc, char* argv[]) {
    PrepareProcess();
    if (const std::optional<QString> word = FirstUndecodableWord(argc, argv)) {
        return RefusePath(*word);
    }
    const QCoreApplication application(argc, argv);
    CConsoleMessages messages;
    const CNamedCommand named = FindCommand(QCoreApplication::arguments().mid(1));
    if (!named.error.isEmpty()) {
        return Refuse(named, named.error);
    }
    const std::vector<COption> options = named.Options();
    const CArguments arguments(named.words, options,
                               named.command != nullptr ? named.command->words : "");
    if (arguments.Has("--help")) {
        PrintHelp(named);
        return kExitDone;
    }
    if (arguments.Has("--version")) {
        PrintLine(stdout, u"velmora-cli "_s + QStringLiteral(VELMORA_VERSION));
        return kExitDone;
    }
    if (!arguments.GetError().isEmpty()) {
        return Refuse(named, arguments.GetError());
    }
    if (named.command == nullptr) {
        return Refuse(named, named.group.isEmpty()
                                 ? u"no command given"_s
                                 : u"no command given for '%1'"_s.arg(named.group));
    }
    const CCommand& command = *named.command;
    const QString error = command.check != nullptr ? command.check(arguments) : QString();
    return error.isEmpty() ? Run(command, arguments, messages) : Refuse(named, error);
}

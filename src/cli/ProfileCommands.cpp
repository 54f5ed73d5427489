// velmora-cli profile ...
#include "cli/Commands.h"
#include "cli/CommonArguments.h"
#include "cli/ProfileFields.h"
#include "cli/TableOutput.h"
#include "platform/Messages.h"

using namespace Qt::StringLiterals;

namespace {
constexpr COption kDeleteOptions[] = {kYesOption};

bool Refuse(const std::optional<QString>& message) {
    if (message) {
        ShowMessage(*message);
    }
    return message.has_value();
}

/// Units are metric unless they are given.
bool Create(CCommandContext& context) {
    const CArguments& arguments = context.arguments;
    CProfileSettings settings = CProfileSettings::ForNewProfile(arguments.Date("--start"));
    settings.preferences = CPreferences();
    settings.user.name = arguments.Word(0).trimmed();
    TakeProfileFields(arguments, settings);
    if (Refuse(CheckUserInformation(settings.user)) ||
        Refuse(context.doc.CheckNewProfileName(settings.user.name)) ||
        Refuse(CheckTargets(settings.targets))) {
        return false;
    }
    ConfirmTargets(settings.user, settings.targets);
    return context.doc.CreateProfile(settings);
}

/// Like the dialogs, it checks and calculates only those parts that change.
bool Set(CCommandContext& context) {
    if (!LoadProfileNamed(context.doc, context.arguments.Word(0))) {
        return false;
    }
    CProfileSettings& stored = context.doc.Settings();
    CProfileSettings settings = stored;
    TakeProfileFields(context.arguments, settings);
    if (settings.user != stored.user && Refuse(CheckUserInformation(settings.user))) {
        return false;
    }
    if (settings.targets != stored.targets) {
        if (Refuse(CheckTargets(settings.targets))) {
            return false;
        }
        ConfirmTargets(settings.user, settings.targets);
    }
    stored = settings;
    return context.doc.SaveSettings();
}

bool List(CCommandContext& context) {
    PrintRow({u"name"_s});
    for (const QString& name : context.doc.Database().Profiles().ReadNames()) {
        PrintRow({name});
    }
    return true;
}

bool Show(CCommandContext& context) {
    if (!LoadProfileNamed(context.doc, context.arguments.Word(0))) {
        return false;
    }
    PrintRow({u"field"_s, u"value"_s});
    PrintProfile(context.doc.Settings());
    return !context.doc.AreSettingsDefaults();
}

bool Delete(CCommandContext& context) {
    const QString name = context.arguments.Word(0);
    return CheckProfileExists(context.doc, name) && context.doc.DeleteUserProfiles({name});
}
}  // namespace

std::span<const CCommand> ProfileCommands() {
    static const CCommand commands[] = {
        {"profile", "create", "NAME", CreateProfileOptions(), EAccess::Writes,
         "create a user profile", Create, CheckProfileFields},
        {"profile", "set", "NAME", SetProfileOptions(), EAccess::Writes,
         "change fields of a profile; the others stay as they are", Set, CheckProfileFields},
        {"profile", "list", "", {}, EAccess::Reads, "list the user profiles", List},
        {"profile", "show", "NAME", {}, EAccess::Reads, "show all fields of a profile", Show},
        {"profile", "delete", "NAME", kDeleteOptions, EAccess::Writes,
         "delete a profile with its diaries", Delete},
    };
    return commands;
}

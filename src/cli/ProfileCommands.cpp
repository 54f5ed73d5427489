// velmora-cli profile ...
#include "cli/Commands.h"
#include "cli/CommonArguments.h"
#include "cli/TableOutput.h"
#include "platform/Messages.h"
#include "platform/NumberText.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
constexpr COptionDescription kCreateOptions[] = {
    {"--sex", true, true},          {"--birth", true, true},        {"--height", true, true},
    {"--activity", true, true},     {"--start", true, true},        {"--start-weight", true, true},
    {"--goal", true, true},         {"--goal-weight", true, true},  {"--rate", true, false},
    {"--energy", true, false},      {"--diet", true, true},         {"--weight-unit", true, false},
    {"--height-unit", true, false}, {"--energy-unit", true, false}, {"--decimals", true, false},
};
constexpr COptionDescription kDeleteOptions[] = {kYesOption};

CPreferences ReadPreferences(CArguments& arguments) {
    CPreferences preferences;
    preferences.weightUnit = static_cast<EWeightUnit>(
        arguments.Index("--weight-unit", 0, 3, static_cast<int>(preferences.weightUnit)));
    preferences.heightUnit = static_cast<EHeightUnit>(
        arguments.Index("--height-unit", 0, 2, static_cast<int>(preferences.heightUnit)));
    preferences.energyUnit = static_cast<EEnergyUnit>(arguments.Index("--energy-unit", 0, 1));
    preferences.decimals = arguments.Index("--decimals", 0, kMaximumDecimals, preferences.decimals);
    return preferences;
}

CUserInformation ReadUser(CArguments& arguments) {
    CUserInformation user;
    user.name = arguments.Word(0).trimmed();
    user.isMale = arguments.Choice("--sex", {u"male"_s, u"female"_s}) == 0;
    user.birthDate = arguments.Date("--birth");
    user.heightCm = arguments.Number("--height");
    user.activityLevel = arguments.Index("--activity", 0, std::ssize(kActivityLevels) - 1);
    return user;
}

// The goal date and the rate hang together as in the dialog: without a rate it follows from the
// dates, with one the goal date follows from it.
CTargets ReadTargets(CArguments& arguments) {
    CTargets targets;
    targets.startDate = arguments.Date("--start");
    targets.startWeightKg = arguments.Number("--start-weight");
    targets.goalDate = arguments.Date("--goal");
    targets.goalWeightKg = arguments.Number("--goal-weight");
    targets.rateKgPerWeek = std::max(0.0, arguments.Number("--rate"));
    targets.dailyEnergyKcal = arguments.Number("--energy");
    targets.dietType = arguments.Index("--diet", 0, kCustomDiet);
    if (arguments.Has("--rate")) {
        FollowRate(targets);
    } else {
        FollowGoalDate(targets);
    }
    return targets;
}

bool Refuse(const std::optional<QString>& message) {
    if (message) {
        ShowMessage(*message);
    }
    return message.has_value();
}

bool Create(CCommandContext& context) {
    CProfileSettings settings = CProfileSettings::ForNewProfile(QDate::currentDate());
    settings.preferences = ReadPreferences(context.arguments);
    settings.user = ReadUser(context.arguments);
    settings.targets = ReadTargets(context.arguments);
    if (!context.arguments.GetError().isEmpty()) {
        return false;
    }
    if (Refuse(CheckUserInformation(settings.user)) ||
        Refuse(context.doc.CheckNewProfileName(settings.user.name)) ||
        Refuse(CheckTargets(settings.targets))) {
        return false;
    }
    ConfirmTargets(settings.user, settings.targets);
    return context.doc.CreateProfile(settings);
}

bool List(CCommandContext& context) {
    PrintRow({u"name"_s});
    for (const QString& name : context.doc.Database().FillProfileNames()) {
        PrintRow({name});
    }
    return true;
}

void PrintField(const QString& field, const QString& value) {
    PrintRow({field, value});
}

bool Show(CCommandContext& context) {
    const QString name = context.arguments.Word(0);
    if (!LoadProfileNamed(context.doc, name)) {
        return false;
    }
    const CProfileSettings& settings = context.doc.Settings();
    const CUserInformation& user = settings.user;
    const CTargets& targets = settings.targets;
    const CPreferences& preferences = settings.preferences;
    PrintRow({u"field"_s, u"value"_s});
    PrintField(u"name"_s, name);
    PrintField(u"sex"_s, user.isMale ? u"male"_s : u"female"_s);
    PrintField(u"birth"_s, user.birthDate.toString(Qt::ISODate));
    PrintField(u"height"_s, ShortestNumber(user.heightCm));
    PrintField(u"activity"_s, QString::number(user.activityLevel));
    PrintField(u"start"_s, targets.startDate.toString(Qt::ISODate));
    PrintField(u"start-weight"_s, ShortestNumber(targets.startWeightKg));
    PrintField(u"goal"_s, targets.goalDate.toString(Qt::ISODate));
    PrintField(u"goal-weight"_s, ShortestNumber(targets.goalWeightKg));
    PrintField(u"rate"_s, ShortestNumber(targets.rateKgPerWeek));
    PrintField(u"energy"_s, ShortestNumber(targets.dailyEnergyKcal));
    PrintField(u"diet"_s, QString::number(targets.dietType));
    PrintField(u"weight-unit"_s, QString::number(static_cast<int>(preferences.weightUnit)));
    PrintField(u"height-unit"_s, QString::number(static_cast<int>(preferences.heightUnit)));
    PrintField(u"energy-unit"_s, QString::number(static_cast<int>(preferences.energyUnit)));
    PrintField(u"decimals"_s, QString::number(preferences.decimals));
    PrintField(u"age"_s, QString::number(AgeOn(targets.startDate, user.birthDate)));
    PrintField(u"resting energy"_s,
               ShortestNumber(RestingEnergyKcal(user, targets, targets.startDate)));
    PrintField(u"planned energy"_s, ShortestNumber(PlannedEnergyKcal(user, targets)));
    const std::optional<int> weeks = WeeksToGoal(targets);
    PrintField(u"weeks"_s, weeks ? QString::number(*weeks) : QString());
    for (int i = 0; i < kNutrientCount; ++i) {
        PrintField(u"target "_s + QLatin1StringView(NutrientNamesOf(i).csvName),
                   ShortestNumber(targets.nutrients[i]));
    }
    return true;
}

bool Delete(CCommandContext& context) {
    const QString name = context.arguments.Word(0);
    return CheckProfileExists(context.doc, name) && context.doc.DeleteUserProfiles({name});
}

constexpr CCommand kCommands[] = {
    {"profile", "create", 1, kCreateOptions,
     "NAME --sex male|female --birth DATE --height CM --activity 0..4 --start DATE\n"
     "        --start-weight KG --goal DATE --goal-weight KG [--rate KG_PER_WEEK] [--energy KCAL]\n"
     "        --diet 0..6 [--weight-unit 0..3] [--height-unit 0..2] [--energy-unit 0|1]\n"
     "        [--decimals N]",
     Create},
    {"profile", "list", 0, {}, "", List},
    {"profile", "show", 1, {}, "NAME", Show},
    {"profile", "delete", 1, kDeleteOptions, "NAME --yes", Delete},
};
}  // namespace

std::span<const CCommand> ProfileCommands() {
    return kCommands;
}

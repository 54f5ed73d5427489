#include "cli/ProfileFields.h"

#include "cli/TableOutput.h"
#include "platform/NumberText.h"

using namespace Qt::StringLiterals;

namespace {
/// kg per week: the largest change of weight that a plan allows, 200 kg, in one day.
constexpr double kHighestRate = 1400;
constexpr double kHighestTarget = 1e6;  // in the nutrient's unit

// The choices of a Code are in the order of the stored codes.
constexpr COption kSex = {"--sex", EValue::Choice, "male|female", "the person's sex"};
constexpr COption kBirth = {"--birth", EValue::Date, "DATE", "the date of birth"};
constexpr COption kHeight = {"--height", EValue::Number, "CM", "the height", 1, 300};
constexpr COption kActivity = {"--activity", EValue::Code, "sedentary|light|moderate|very|extra",
                               "how active the days are"};
constexpr COption kStart = {"--start", EValue::Date, "DATE", "the start of the plan"};
constexpr COption kStartWeight = {
    "--start-weight", EValue::Number, "KG", "the weight at the start", 0, 1000};
constexpr COption kGoal = {.name = "--goal",
                           .kind = EValue::Date,
                           .value = "DATE",
                           .help = "the end of the plan, unless --rate is given",
                           .rival = "--rate"};
constexpr COption kGoalWeight = {
    "--goal-weight", EValue::Number, "KG", "the weight to reach", 0, 1000};
constexpr COption kRate = {
    "--rate", EValue::Number, "KG_PER_WEEK", "the weekly change, unless --goal is given",
    0,        kHighestRate};
constexpr COption kEnergy = {
    "--energy", EValue::Number, "KCAL", "the daily energy; 0 computes it from the plan", 0, 100000};
constexpr COption kDiet = {"--diet", EValue::Code,
                           "vegetarian|prudent|diabetic|pyramid|low-carbs|zone|custom",
                           "the diet type"};
constexpr COption kTarget = {
    .name = "--target",
    .kind = EValue::Target,
    .value = "NUTRIENT=VALUE",
    .help = "a daily target of the custom diet, such as Iron(mg)=18 or 10=18",
    .high = kHighestTarget,
    .need = ENeed::Repeatable};
constexpr COption kWeightUnit = {"--weight-unit", EValue::Code, "lb|kg|st|st-lb",
                                 "the unit of weights"};
constexpr COption kHeightUnit = {"--height-unit", EValue::Code, "in|cm|ft", "the unit of lengths"};
constexpr COption kEnergyUnit = {"--energy-unit", EValue::Code, "kcal|kJ", "the unit of energies"};
constexpr COption kDecimals = {"--decimals",    EValue::Whole, "NUMBER", "the decimals shown", 0,
                               kMaximumDecimals};
constexpr COption kShowNutrients = {"--show-nutrients", EValue::Nutrients, "NUTRIENTS",
                                    "what lists show, such as 0,1,Iron(mg)"};

constexpr COption kCreateOptions[] = {
    Required(kSex),
    Required(kBirth),
    Required(kHeight),
    Required(kActivity),
    Required(kStart),
    Required(kStartWeight),
    Required(kGoal),
    Required(kGoalWeight),
    kRate,
    kEnergy,
    Required(kDiet),
    kTarget,
    kWeightUnit,
    kHeightUnit,
    kEnergyUnit,
    kDecimals,
    kShowNutrients,
};
constexpr COption kSetOptions[] = {
    kSex,        kBirth,      kHeight,     kActivity, kStart,         kStartWeight,
    kGoal,       kGoalWeight, kRate,       kEnergy,   kDiet,          kTarget,
    kWeightUnit, kHeightUnit, kEnergyUnit, kDecimals, kShowNutrients,
};

/// Whether the diet type sets the target. It never sets those of user-defined nutrients.
bool IsDecidedByDiet(int nutrient) {
    return nutrient < kFirstUserNutrient;
}

void TakeUser(const CArguments& arguments, CUserInformation& user) {
    user.isMale = arguments.Choice(kSex.name, user.isMale ? 0 : 1) == 0;
    user.birthDate = arguments.Date(kBirth.name, user.birthDate);
    user.heightCm = arguments.Number(kHeight.name, user.heightCm);
    user.activityLevel = arguments.Choice(kActivity.name, user.activityLevel);
}

void TakePlan(const CArguments& arguments, CTargets& targets) {
    const CTargets before = targets;
    targets.startDate = arguments.Date(kStart.name, targets.startDate);
    targets.startWeightKg = arguments.Number(kStartWeight.name, targets.startWeightKg);
    targets.goalDate = arguments.Date(kGoal.name, targets.goalDate);
    targets.goalWeightKg = arguments.Number(kGoalWeight.name, targets.goalWeightKg);
    targets.rateKgPerWeek = arguments.Number(kRate.name, targets.rateKgPerWeek);
    if (arguments.Has(kRate.name)) {
        FollowRate(targets);
    } else if (arguments.Has(kGoal.name)) {
        FollowGoalDate(targets);
    }
    if (targets != before) {
        targets.dailyEnergyKcal = 0;
    }
    targets.dailyEnergyKcal = arguments.Number(kEnergy.name, targets.dailyEnergyKcal);
}

void TakeTargets(const CArguments& arguments, CTargets& targets) {
    targets.dietType = arguments.Choice(kDiet.name, targets.dietType);
    for (const auto& [nutrient, value] : arguments.Targets(kTarget.name)) {
        double& target = targets.nutrients.at(nutrient);
        if (target != value && IsDecidedByDiet(nutrient)) {
            targets.dietType = kCustomDiet;
        }
        target = value;
    }
}

void TakePreferences(const CArguments& arguments, CPreferences& preferences) {
    const auto choice = [&](const COption& option, auto unit) {
        return static_cast<decltype(unit)>(arguments.Choice(option.name, static_cast<int>(unit)));
    };
    preferences.weightUnit = choice(kWeightUnit, preferences.weightUnit);
    preferences.heightUnit = choice(kHeightUnit, preferences.heightUnit);
    preferences.energyUnit = choice(kEnergyUnit, preferences.energyUnit);
    preferences.decimals = arguments.Whole(kDecimals.name, preferences.decimals);
    preferences.displayed = arguments.Nutrients(kShowNutrients.name, preferences.displayed);
}

void PrintField(const QString& field, const QString& value) {
    PrintRow({field, value});
}

/// Named as the option without its dashes.
void PrintField(const COption& option, const QString& value) {
    PrintField(QLatin1StringView(option.name).sliced(2), value);
}

void PrintField(const COption& option, QDate date) {
    PrintField(option, date.toString(Qt::ISODate));
}

void PrintField(const COption& option, double value) {
    PrintField(option, ShortestNumber(value));
}

template <typename Code>
void PrintCode(const COption& option, Code code) {
    PrintField(option, QString::number(static_cast<int>(code)));
}

void PrintUserAndPlan(const CUserInformation& user, const CTargets& targets) {
    PrintField(kSex, user.isMale ? u"male"_s : u"female"_s);
    PrintField(kBirth, user.birthDate);
    PrintField(kHeight, user.heightCm);
    PrintCode(kActivity, user.activityLevel);
    PrintField(kStart, targets.startDate);
    PrintField(kStartWeight, targets.startWeightKg);
    PrintField(kGoal, targets.goalDate);
    PrintField(kGoalWeight, targets.goalWeightKg);
    PrintField(kRate, targets.rateKgPerWeek);
    PrintField(kEnergy, targets.dailyEnergyKcal);
    PrintCode(kDiet, targets.dietType);
}

void PrintComputed(const CUserInformation& user, const CTargets& targets) {
    PrintField(u"age"_s, QString::number(AgeOn(targets.startDate, user.birthDate)));
    PrintField(u"resting energy"_s,
               ShortestNumber(RestingEnergyKcal(user, targets, targets.startDate)));
    PrintField(u"planned energy"_s, ShortestNumber(PlannedEnergyKcal(user, targets)));
    const std::optional<int> weeks = WeeksToGoal(targets);
    PrintField(u"weeks"_s, weeks ? QString::number(*weeks) : QString());
}
}  // namespace

std::span<const COption> CreateProfileOptions() {
    return kCreateOptions;
}

std::span<const COption> SetProfileOptions() {
    return kSetOptions;
}

QString CheckProfileFields(const CArguments& arguments) {
    const bool isCustom = arguments.Choice(kDiet.name, kCustomDiet) == kCustomDiet;
    for (const CNutrientTarget& target : arguments.Targets(kTarget.name)) {
        if (!isCustom && IsDecidedByDiet(target.nutrient)) {
            return u"--target %1 requires --diet custom"_s.arg(
                QLatin1StringView(NutrientNamesOf(target.nutrient).csvName));
        }
    }
    return {};
}

void TakeProfileFields(const CArguments& arguments, CProfileSettings& settings) {
    TakeUser(arguments, settings.user);
    TakePlan(arguments, settings.targets);
    TakeTargets(arguments, settings.targets);
    TakePreferences(arguments, settings.preferences);
}

void PrintProfile(const CProfileSettings& settings) {
    const CPreferences& preferences = settings.preferences;
    PrintField(u"name"_s, settings.user.name);
    PrintUserAndPlan(settings.user, settings.targets);
    PrintCode(kWeightUnit, preferences.weightUnit);
    PrintCode(kHeightUnit, preferences.heightUnit);
    PrintCode(kEnergyUnit, preferences.energyUnit);
    PrintCode(kDecimals, preferences.decimals);
    PrintComputed(settings.user, settings.targets);
    for (int i = 0; i < kNutrientCount; ++i) {
        PrintField(u"target "_s + QLatin1StringView(NutrientNamesOf(i).csvName),
                   ShortestNumber(settings.targets.nutrients.at(i)));
    }
    QStringList displayed;
    for (const int nutrient : preferences.DisplayedNutrients()) {
        displayed.append(QString::number(nutrient));
    }
    PrintField(kShowNutrients, displayed.join(u','));
}

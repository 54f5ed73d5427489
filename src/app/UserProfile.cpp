#include "app/UserProfile.h"

#include <cmath>

#include "platform/Messages.h"
#include "platform/NumberText.h"

using namespace Qt::StringLiterals;

namespace {
constexpr double kKcalPerKg = 7777.777777777777;  // of body weight
constexpr double kWeeksPerDay = 1.0 / 7;
constexpr double kSmallestShownRate = 0.001;  // kg per week that shows weeks
constexpr double kSmallestChangeKg = 0.01;
constexpr double kLargestChangeKg = 200;
constexpr double kLowestEnergyKcal = 1200;
constexpr double kNoEnergyKcal = 0.001;  // less counts as missing

// Limits typed in pounds differ from the limits in kilograms by a rounding error.
constexpr double kWeightToleranceKg = 1e-6;

constexpr double kGramsPerKcal = 0.25;  // carbohydrate and protein
constexpr double kFatGramsPerKcal = 0.1111111111111111;
constexpr double kFiberShare = 0.1;  // of the carbohydrate
constexpr double kSugarShare = 0.16666666666666666;
constexpr double kSaturatedFatShare = 0.1;  // of the number of kcal, not converted to grams

enum ENutrient : int {
    kProtein = 1,
    kTotalLipid = 2,
    kCarbohydrate = 3,
    kFiber = 4,
    kSugar = 6,
    kSaturatedFat = 30,
};

struct CFixedTarget {
    int index;
    double value;  // per day, in the nutrient's unit
};
constexpr CFixedTarget kDailyReferences[] = {
    {5, 0},      // alcohol
    {7, 0},      // ash
    {8, 0},      // water
    {9, 1000},   // calcium
    {10, 18},    // iron
    {11, 400},   // magnesium
    {12, 1000},  // phosphorus
    {13, 3500},  // potassium
    {14, 2400},  // sodium
    {15, 15},    // zinc
    {16, 2},     // copper
    {17, 2},     // manganese
    {18, 70},    // selenium
    {19, 60},    // vitamin C
    {20, 1.5},   // thiamin
    {21, 1.7},   // riboflavin
    {22, 20},    // niacin
    {23, 10},    // pantothenic acid
    {24, 2},     // vitamin B6
    {25, 400},   // folate
    {26, 6},     // vitamin B12
    {27, 5000},  // vitamin A
    {28, 15},    // vitamin E
    {29, 400},   // vitamin D
    {31, 0},     // monounsaturated fatty acids
    {32, 0},     // polyunsaturated fatty acids
    {33, 300},   // cholesterol
};

/// Kilograms between start and goal; nothing when they are too few or too many for a plan.
std::optional<double> PlannedChangeKg(const CTargets& targets) {
    const double change = std::abs(targets.goalWeightKg - targets.startWeightKg);
    if (change > kSmallestChangeKg && change < kLargestChangeKg) {
        return change;
    }
    return std::nullopt;
}
}  // namespace

int AgeOn(QDate date, QDate birthDate) {
    return static_cast<int>(birthDate.daysTo(date) / 365);
}

double RestingEnergyKcal(const CUserInformation& user, const CTargets& targets, QDate date) {
    const double weight = targets.startWeightKg;
    const double age = AgeOn(date, user.birthDate);
    if (user.isMale) {
        return 66.5 + 13.75 * weight + 5.003 * user.heightCm - 6.775 * age;
    }
    return 655.1 + 9.563 * weight + 1.85 * user.heightCm - 4.676 * age;
}

double PlannedEnergyKcal(const CUserInformation& user, const CTargets& targets) {
    const double need = RestingEnergyKcal(user, targets, targets.startDate) *
                        kActivityLevels.at(user.activityLevel).factor;
    if (!(targets.rateKgPerWeek > kSmallestRate)) {
        return need;
    }
    const double change = targets.rateKgPerWeek * kWeeksPerDay * kKcalPerKg;
    return targets.startWeightKg >= targets.goalWeightKg ? need - change : need + change;
}

std::optional<int> WeeksToGoal(const CTargets& targets) {
    if (Whole(targets.goalWeightKg - targets.startWeightKg) == 0 ||
        !(targets.rateKgPerWeek > kSmallestShownRate)) {
        return std::nullopt;
    }
    return static_cast<int>(targets.startDate.daysTo(targets.goalDate) / 7) + 1;
}

void FollowRate(CTargets& targets) {
    const std::optional<double> change = PlannedChangeKg(targets);
    if (!change || !(targets.rateKgPerWeek > kSmallestRate)) {
        return;
    }
    const int days = Whole(*change / (targets.rateKgPerWeek * kWeeksPerDay) + 0.05);
    targets.goalDate = targets.startDate.addDays(days);
}

void FollowGoalDate(CTargets& targets) {
    const std::optional<double> change = PlannedChangeKg(targets);
    const qint64 days = targets.startDate.daysTo(targets.goalDate);
    if (!change || days <= 0) {
        return;
    }
    targets.rateKgPerWeek = *change / (static_cast<double>(days) * kWeeksPerDay);
}

void RecalculateNutrientTargets(CTargets& targets) {
    if (targets.dietType == kCustomDiet) {
        return;
    }
    const CDietType& diet = kDietTypes.at(targets.dietType);
    NutrientValues& nutrients = targets.nutrients;
    const double energy = Whole(targets.dailyEnergyKcal + 0.5);
    nutrients[kEnergyIndex] = energy;
    nutrients[kCarbohydrate] = energy * diet.carbohydrate * kGramsPerKcal;
    nutrients[kProtein] = energy * diet.protein * kGramsPerKcal;
    nutrients[kTotalLipid] = energy * diet.fat * kFatGramsPerKcal;
    nutrients[kFiber] = nutrients[kCarbohydrate] * kFiberShare;
    nutrients[kSugar] = nutrients[kCarbohydrate] * kSugarShare;
    nutrients[kSaturatedFat] = energy * kSaturatedFatShare;
    for (const CFixedTarget& reference : kDailyReferences) {
        nutrients[reference.index] = reference.value;
    }
}

bool IsWeightAllowed(double weightKg) {
    return weightKg >= kLowestWeightKg - kWeightToleranceKg &&
           weightKg <= kHighestWeightKg + kWeightToleranceKg;
}

std::optional<QString> CheckUserInformation(const CUserInformation& user) {
    if (user.name.trimmed().isEmpty()) {
        return u"Please enter user name."_s;
    }
    if (!user.birthDate.isValid() || user.birthDate > QDate::currentDate()) {
        return u"Please enter correct birth date."_s;
    }
    if (!std::isfinite(user.heightCm) || user.heightCm <= 0) {
        return u"Please enter correct height."_s;
    }
    return std::nullopt;
}

std::optional<QString> CheckTargets(const CTargets& targets) {
    if (!IsWeightAllowed(targets.startWeightKg)) {
        return u"Please enter correct start weight."_s;
    }
    if (!IsWeightAllowed(targets.goalWeightKg)) {
        return u"Please enter correct goal weight."_s;
    }
    if (!targets.startDate.isValid() || !targets.goalDate.isValid() ||
        targets.startDate > targets.goalDate) {
        return u"Please enter correct start/goal date."_s;
    }
    return std::nullopt;
}

std::optional<QString> EnergyWarning(const CTargets& targets) {
    if (targets.dailyEnergyKcal < kLowestEnergyKcal) {
        return u"Your daily energy intake is too low. You need at least 1200 kcal per day to "
               u"support "
               "your body's basic functions."_s;
    }
    return std::nullopt;
}

void FillMissingEnergy(const CUserInformation& user, CTargets& targets) {
    if (!(targets.dailyEnergyKcal >= kNoEnergyKcal)) {
        targets.dailyEnergyKcal = PlannedEnergyKcal(user, targets);
    }
}

void ConfirmTargets(const CUserInformation& user, CTargets& targets) {
    FillMissingEnergy(user, targets);
    if (const std::optional<QString> warning = EnergyWarning(targets)) {
        ShowMessage(*warning, EMessageIcon::Warning);
    }
    RecalculateNutrientTargets(targets);
}

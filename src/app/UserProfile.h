// Who the user is and where the plan leads: the data of a profile and the rules of its dialogs.
#pragma once

#include <QDate>
#include <QString>
#include <array>
#include <optional>

#include "store/records/NutrientTable.h"

inline constexpr int kProfileNameLength = 21;  ///< longest name whose four databases all fit

struct CUserInformation {
    QString name;
    bool isMale = true;
    QDate birthDate;
    double heightCm = 0;
    int activityLevel = 0;  ///< 0 to 4, see kActivityLevels
    bool operator==(const CUserInformation&) const = default;
};

struct CTargets {
    QDate startDate;
    double startWeightKg = 0;
    QDate goalDate;
    double goalWeightKg = 0;
    double rateKgPerWeek = 0;
    double dailyEnergyKcal = 0;
    int dietType = 0;            ///< 0 to 6, see kDietTypes
    NutrientValues nutrients{};  ///< one daily target a nutrient index, in its unit
    bool operator==(const CTargets&) const = default;
};

struct CActivityLevel {
    const char* name;
    double factor;
};
inline constexpr std::array<CActivityLevel, 5> kActivityLevels = {{
    {"Sedentary", 1.2},
    {"Light active", 1.375},
    {"Mod. active", 1.55},
    {"Very active", 1.725},
    {"Extra active", 1.9},
}};

/// Shares of the daily energy.
struct CDietType {
    const char* name;
    double carbohydrate;
    double protein;
    double fat;
};
inline constexpr std::array<CDietType, 7> kDietTypes = {{
    {"80-10-10: vegetarian", 0.8, 0.1, 0.1},
    {"70-15-15: prudent", 0.7, 0.15, 0.15},
    {"60-20-20: diabetic", 0.6, 0.2, 0.2},
    {"55-20-25: pyramid", 0.55, 0.2, 0.25},
    {"50-25-25: low carbs", 0.5, 0.25, 0.25},
    {"40-30-30: zone diet", 0.4, 0.3, 0.3},
    {"00-00-00: custom", 0, 0, 0},
}};
inline constexpr int kCustomDiet = 6;

/// kg per week that a rate must exceed to count as a plan.
inline constexpr double kSmallestRate = 0.01;

/// Age in whole years: days divided by 365, truncated; leap days are not counted separately.
int AgeOn(QDate date, QDate birthDate);

/// Resting energy in kcal per day by the Harris-Benedict equations, at the start weight and at the
/// age on `date`.
double RestingEnergyKcal(const CUserInformation& user, const CTargets& targets, QDate date);

/// Daily energy in kcal: the need (resting energy times the activity factor), less or plus what
/// the weekly rate asks for. The age is that on the start date.
double PlannedEnergyKcal(const CUserInformation& user, const CTargets& targets);

/// Weeks to the goal; nothing when there is nothing to show.
std::optional<int> WeeksToGoal(const CTargets& targets);

/// The rate decides the goal date, or the goal date the rate; both leave the targets as they are
/// when the weights or the rate give no sensible answer.
void FollowRate(CTargets& targets);
void FollowGoalDate(CTargets& targets);

/// Nutrient targets from the daily energy and the diet type. The custom type leaves all targets
/// as they are; the user-defined nutrients always keep theirs.
void RecalculateNutrientTargets(CTargets& targets);

inline constexpr double kLowestWeightKg = 10;
inline constexpr double kHighestWeightKg = 250;
/// Both limits are allowed, also when they were typed in pounds.
bool IsWeightAllowed(double weightKg);

/// First reason why the dialog must stay open, as its message; nothing when all is well.
std::optional<QString> CheckUserInformation(const CUserInformation& user);
std::optional<QString> CheckTargets(const CTargets& targets);
/// "Your daily energy intake is too low. ..." below 1200 kcal, a warning only.
std::optional<QString> EnergyWarning(const CTargets& targets);

/// The need and the rate give the daily energy when there is none (below 0.001 kcal).
void FillMissingEnergy(const CUserInformation& user, CTargets& targets);

/// What "OK" of the targets dialog does once CheckTargets is content: fills in a missing daily
/// energy, shows EnergyWarning and recalculates the nutrient targets.
void ConfirmTargets(const CUserInformation& user, CTargets& targets);

// User information and plan of a profile, and the rules of its dialogs.
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
    NutrientValues nutrients{};  ///< daily targets, each in its nutrient's unit
    bool operator==(const CTargets&) const = default;
};

struct CActivityLevel {
    const char* name;
    double factor;  ///< daily need / resting energy
};
inline constexpr std::array<CActivityLevel, 5> kActivityLevels = {{
    {"Sedentary", 1.2},
    {"Light active", 1.375},
    {"Mod. active", 1.55},
    {"Very active", 1.725},
    {"Extra active", 1.9},
}};

/// Shares of the daily energy, 0 to 1.
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

/// kg per week; a plan must have a larger rate.
inline constexpr double kSmallestRate = 0.01;

/// Age in whole years: days divided by 365, truncated; leap days are not counted separately.
int AgeOn(QDate date, QDate birthDate);

/// Resting energy in kcal per day by the Harris-Benedict equations, at the start weight and at the
/// age on `date`.
double RestingEnergyKcal(const CUserInformation& user, const CTargets& targets, QDate date);

/// Daily energy in kcal: the need (resting energy times the activity factor) minus or plus the
/// energy of the weekly rate. The age is that on the start date.
double PlannedEnergyKcal(const CUserInformation& user, const CTargets& targets);

/// Weeks to the goal, the whole ones and one more; nothing when the weights differ by less than 1
/// kg or there is no rate.
std::optional<int> WeeksToGoal(const CTargets& targets);

/// FollowRate sets the goal date from the rate, FollowGoalDate the rate from the goal date. Nothing
/// is changed when the weights differ too little or too much, or without a rate or time to the
/// goal.
void FollowRate(CTargets& targets);
void FollowGoalDate(CTargets& targets);

/// Sets the nutrient targets from the daily energy and the diet type. The custom type changes no
/// target, and the targets of user-defined nutrients never change.
void RecalculateNutrientTargets(CTargets& targets);

inline constexpr double kLowestWeightKg = 10;
inline constexpr double kHighestWeightKg = 250;
/// The limits themselves are allowed, also when they were typed in pounds.
bool IsWeightAllowed(double weightKg);

/// The message about the first invalid value; nothing when all are valid.
std::optional<QString> CheckUserInformation(const CUserInformation& user);
std::optional<QString> CheckTargets(const CTargets& targets);
/// "Your daily energy intake is too low. ..." below 1200 kcal, a warning only.
std::optional<QString> EnergyWarning(const CTargets& targets);

/// Sets a missing daily energy (below 0.001 kcal) to PlannedEnergyKcal.
void FillMissingEnergy(const CUserInformation& user, CTargets& targets);

/// What "OK" of the targets dialog does after CheckTargets: fills in a missing daily energy, shows
/// EnergyWarning and recalculates the nutrient targets.
void ConfirmTargets(const CUserInformation& user, CTargets& targets);

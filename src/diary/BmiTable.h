// The body mass index: what it says about a weight, and the table around the user's own weights.
#pragma once

#include <QString>
#include <vector>

#include "app/VelmoraDoc.h"

/// A low index is a high risk, too.
enum class EHealthRisk { Low, Moderate, High };

/// kg per square metre of height.
double BodyMassIndex(double weightKg, double heightCm);
EHealthRisk RiskOf(double bmi);
QString RiskText(EHealthRisk risk);

struct CBmiTableItem {
    QString weight;  ///< a whole number of kilograms or pounds
    QString bmi;
    QString risk;            ///< with " <--" behind it where the current weight is
    quint32 background = 0;  ///< red in the low byte
};

struct CBmiWeights {
    double currentKg = 0;
    double startKg = 0;
    double goalKg = 0;
};

/// Item 0 is the header. The weights go from 10 kg below the lowest of the three to less than
/// 10 kg above the highest, one kilogram a row, or two pounds a row for pounds and stones. Weights
/// outside 0 to kHighestEntryKg count as the nearer of the two.
std::vector<CBmiTableItem> BmiTable(const CBmiWeights& weights, double heightCm, EWeightUnit unit);

/// "Your BMI is %6.2f".
QString BmiText(double bmi);

/// What the profile's dialog shows for a day.
struct CBmiView {
    QString text;
    std::vector<CBmiTableItem> table;
};
CBmiView BmiOnDay(CVelmoraDoc& doc, QDate day);

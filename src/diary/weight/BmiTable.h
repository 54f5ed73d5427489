// The body mass index, its health risk, and the table around the user's own weights.
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
    QString risk;            ///< followed by " <--" at the current weight
    quint32 background = 0;  ///< red in the low byte
};

struct CBmiWeights {
    double currentKg = 0;
    double startKg = 0;
    double goalKg = 0;
};

/// Item 0 is the header. The weights go from 10 kg below the lowest of the three to less than
/// 10 kg above the highest, in steps of one kilogram, or of two pounds for pounds and stones.
/// `weights` are limited to 0 to kHighestEntryKg.
std::vector<CBmiTableItem> BmiTable(const CBmiWeights& weights, double heightCm, EWeightUnit unit);

/// "Your BMI is %6.2f".
QString BmiText(double bmi);

/// What the "BMI" dialog shows.
struct CBmiView {
    QString text;
    std::vector<CBmiTableItem> table;
};
/// With the weight in force on `day`.
CBmiView BmiOnDay(CVelmoraDoc& doc, QDate day);

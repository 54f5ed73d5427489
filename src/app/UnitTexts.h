// Weights and heights as the fields of a dialog hold them: one number, or two where the unit is
// written as a pair (stones and pounds, feet and inches).
#pragma once

#include <QString>
#include <functional>

#include "app/Units.h"

/// The minor text stays empty for units of one number.
struct CUnitTexts {
    QString major;
    QString minor;
    bool operator==(const CUnitTexts&) const = default;
};

/// How a list, a report or a field writes a number.
using NumberFormat = std::function<QString(double)>;

/// A number for a field: at most two decimals, none that say nothing, the locale's separator.
QString FieldNumber(double value);

/// The units' abbreviations: "st" and "lb", or "kg" alone.
CUnitTexts WeightLabels(EWeightUnit unit);
CUnitTexts WeightTexts(double kg, EWeightUnit unit);
/// A weight in one text, "71.50" or "11,3.50". Pounds left over that `number` rounds to 14 are not
/// carried: the stones are those of the stored weight.
QString WeightText(double kg, EWeightUnit unit, const NumberFormat& number);
/// A difference of weights, which has no stones: all of it is in pounds.
QString WeightChangeText(double kg, EWeightUnit unit, const NumberFormat& number);
/// Texts that are no numbers count 0.
double ReadWeightKg(const CUnitTexts& texts, EWeightUnit unit);

CUnitTexts HeightLabels(EHeightUnit unit);
CUnitTexts HeightTexts(double cm, EHeightUnit unit);
double ReadHeightCm(const CUnitTexts& texts, EHeightUnit unit);

// Weights and heights as the fields of a dialog show them: one number, or two where the unit is a
// pair (stones and pounds, feet and inches).
#pragma once

#include <QString>
#include <functional>

#include "app/Units.h"

/// The minor text is empty for units with one number.
struct CUnitTexts {
    QString major;
    QString minor;
    bool operator==(const CUnitTexts&) const = default;
};

/// How a list, a report or a field formats a number.
using NumberFormat = std::function<QString(double)>;

/// A number for a field: at most two decimals without trailing zeros, the locale's separator.
QString FieldNumber(double value);

/// The units' abbreviations: "st" and "lb", or "kg" alone.
CUnitTexts WeightLabels(EWeightUnit unit);
CUnitTexts WeightTexts(double kg, EWeightUnit unit);
/// A weight in one text, "71.50" or "11,3.50". The stones are those of the stored weight, even when
/// `number` rounds the remaining pounds to 14.
QString WeightText(double kg, EWeightUnit unit, const NumberFormat& number);
/// A difference of weights: in pounds alone for units with stones.
QString WeightChangeText(double kg, EWeightUnit unit, const NumberFormat& number);
/// A text without a number counts as 0, here and in ReadHeightCm.
double ReadWeightKg(const CUnitTexts& texts, EWeightUnit unit);

CUnitTexts HeightLabels(EHeightUnit unit);
CUnitTexts HeightTexts(double cm, EHeightUnit unit);
double ReadHeightCm(const CUnitTexts& texts, EHeightUnit unit);

/// True, after "The number '%s' is too large.", when a typed number is beyond kLargestTyped.
bool RefuseTooLarge(const QStringList& typed);

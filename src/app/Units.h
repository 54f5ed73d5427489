// Every unit the user sees, and every conversion from and to the base units: kilograms,
// centimetres and kcal. The factors are the system's own and are defined only here.
#pragma once

#include <QString>

/// Stored preference codes.
enum class EWeightUnit : qint16 { Pounds = 0, Kilograms = 1, Stones = 2, StonesAndPounds = 3 };
enum class EHeightUnit : qint16 { Inches = 0, Centimetres = 1, Feet = 2 };
enum class EEnergyUnit : qint16 { Kcal = 0, KJ = 1 };

enum class EUnitForm { Singular, Plural, Abbreviated };

QString UnitName(EWeightUnit unit, EUnitForm form);
QString UnitName(EHeightUnit unit, EUnitForm form);
QString UnitName(EEnergyUnit unit, EUnitForm form);

/// The unit of a weight that is shown as a single number, on an axis or as a change: kilograms or
/// pounds.
EWeightUnit SingleWeightUnit(EWeightUnit unit);
/// `kg` in SingleWeightUnit.
double WeightShown(double kg, EWeightUnit unit);

double KgToPounds(double kg);
double PoundsToKg(double pounds);
/// Whole stones, and the remaining pounds.
struct CStones {
    int stones = 0;
    double pounds = 0;
};
CStones KgToStones(double kg);
double StonesToKg(double stones, double pounds);

inline constexpr int kInchesPerFoot = 12;
double FeetToCm(double feet, double inches);
int CmToWholeFeet(double cm);
/// The remaining inches after the whole feet.
double CmToLeftoverInches(double cm);
double CmToInches(double cm);
double InchesToCm(double inches);

double KcalToKJ(double kcal);
double KJToKcal(double kJ);
/// An energy rounded to a whole number of the unit: 0.5 is added and the result truncated.
int WholeEnergy(double kcal, EEnergyUnit unit);
/// kcal in the unit, and back.
double EnergyShown(double kcal, EEnergyUnit unit);
double EnergyStored(double shown, EEnergyUnit unit);

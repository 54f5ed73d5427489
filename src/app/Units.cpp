#include "app/Units.h"

#include <array>

#include "platform/NumberText.h"

namespace {
struct CUnitNames {
    const char* singular;
    const char* plural;
    const char* abbreviation;
};

// Indexed by stored code.
constexpr std::array<CUnitNames, 4> kWeightUnits = {{
    {"Pound", "Pounds", "lb"},
    {"Kilogram", "Kilograms", "kg"},
    {"Stone", "Stones", "st"},
    {"st,lb", "st,lb", "st,lb"},
}};
constexpr std::array<CUnitNames, 3> kHeightUnits = {{
    {"Inch", "Inches", "in"},
    {"Centimeter", "Centimeters", "cm"},
    {"Feet", "Feets", "ft"},
}};
constexpr std::array<CUnitNames, 2> kEnergyUnits = {{
    {"kcal", "kcal", "kcal"},
    {"kJ", "kJ", "kJ"},
}};

constexpr double kPoundsPerKg = 2.2046;
constexpr double kKgPerPound = 0.4535970244035199;  // 1/2.2046, not the exact pound
constexpr double kPoundsPerStone = 14;
constexpr double kStonesPerPound = 0.07142857142857142;
constexpr double kCmPerFoot = 30.48;
constexpr double kFeetPerCm = 0.03280839895013123;
constexpr double kCmPerInch = 2.54;
constexpr double kInchesPerCm = 0.39370078740157477;
constexpr double kKJPerKcal = 4.18;
constexpr double kKcalPerKJ = 0.23923444976076558;

QString NameOf(const CUnitNames& names, EUnitForm form) {
    switch (form) {
        case EUnitForm::Singular:
            return QString::fromLatin1(names.singular);
        case EUnitForm::Plural:
            return QString::fromLatin1(names.plural);
        case EUnitForm::Abbreviated:
            break;
    }
    return QString::fromLatin1(names.abbreviation);
}
}  // namespace

QString UnitName(EWeightUnit unit, EUnitForm form) {
    return NameOf(kWeightUnits.at(static_cast<size_t>(unit)), form);
}

QString UnitName(EHeightUnit unit, EUnitForm form) {
    return NameOf(kHeightUnits.at(static_cast<size_t>(unit)), form);
}

QString UnitName(EEnergyUnit unit, EUnitForm form) {
    return NameOf(kEnergyUnits.at(static_cast<size_t>(unit)), form);
}

EWeightUnit SingleWeightUnit(EWeightUnit unit) {
    return unit == EWeightUnit::Kilograms ? EWeightUnit::Kilograms : EWeightUnit::Pounds;
}

double WeightShown(double kg, EWeightUnit unit) {
    return SingleWeightUnit(unit) == EWeightUnit::Kilograms ? kg : KgToPounds(kg);
}

double KgToPounds(double kg) {
    return kg * kPoundsPerKg;
}

double PoundsToKg(double pounds) {
    return pounds * kKgPerPound;
}

CStones KgToStones(double kg) {
    const double pounds = KgToPounds(kg);
    const int stones = Whole(pounds * kStonesPerPound);
    return {stones, pounds - kPoundsPerStone * stones};
}

double StonesToKg(double stones, double pounds) {
    return PoundsToKg(kPoundsPerStone * stones + pounds);
}

double FeetToCm(double feet, double inches) {
    return feet * kCmPerFoot + inches * kCmPerInch;
}

int CmToWholeFeet(double cm) {
    return Whole(cm * kFeetPerCm);
}

double CmToLeftoverInches(double cm) {
    return CmToInches(cm) - kInchesPerFoot * CmToWholeFeet(cm);
}

double CmToInches(double cm) {
    return cm * kInchesPerCm;
}

double InchesToCm(double inches) {
    return inches * kCmPerInch;
}

double KcalToKJ(double kcal) {
    return kcal * kKJPerKcal;
}

double KJToKcal(double kJ) {
    return kJ * kKcalPerKJ;
}

int WholeEnergy(double kcal, EEnergyUnit unit) {
    return Whole(EnergyShown(kcal, unit) + 0.5);
}

double EnergyShown(double kcal, EEnergyUnit unit) {
    return unit == EEnergyUnit::KJ ? KcalToKJ(kcal) : kcal;
}

double EnergyStored(double shown, EEnergyUnit unit) {
    return unit == EEnergyUnit::KJ ? KJToKcal(shown) : shown;
}

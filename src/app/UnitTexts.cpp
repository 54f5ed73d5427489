#include "app/UnitTexts.h"

#include "platform/NumberText.h"

namespace {
bool IsPair(EWeightUnit unit) {
    return unit == EWeightUnit::Stones || unit == EWeightUnit::StonesAndPounds;
}

double Typed(const QString& text) {
    return TypedNumber(text).value_or(0);
}

// A remainder that rounds to a full unit is carried, so that nobody reads "10 st 14 lb".
CUnitTexts PairTexts(int major, double minor, int minorsPerMajor) {
    const QString minorText = FieldNumber(minor);
    if (minorText == QString::number(minorsPerMajor)) {
        return {QString::number(major + 1), QString::number(0)};
    }
    return {QString::number(major), minorText};
}
}  // namespace

QString FieldNumber(double value) {
    QString text = ShownNumber(value, 2);
    while (text.endsWith(u'0')) {
        text.chop(1);
    }
    if (!text.isEmpty() && !text.back().isDigit()) {
        text.chop(1);
    }
    return text;
}

CUnitTexts WeightLabels(EWeightUnit unit) {
    if (IsPair(unit)) {
        return {UnitName(EWeightUnit::Stones, EUnitForm::Abbreviated),
                UnitName(EWeightUnit::Pounds, EUnitForm::Abbreviated)};
    }
    return {UnitName(unit, EUnitForm::Abbreviated), {}};
}

CUnitTexts WeightTexts(double kg, EWeightUnit unit) {
    if (IsPair(unit)) {
        return PairTexts(KgToWholeStones(kg), KgToLeftoverPounds(kg), 14);
    }
    return {FieldNumber(unit == EWeightUnit::Pounds ? KgToPounds(kg) : kg), {}};
}

double ReadWeightKg(const CUnitTexts& texts, EWeightUnit unit) {
    if (IsPair(unit)) {
        return StonesToKg(Typed(texts.major), Typed(texts.minor));
    }
    const double weight = Typed(texts.major);
    return unit == EWeightUnit::Pounds ? PoundsToKg(weight) : weight;
}

CUnitTexts HeightLabels(EHeightUnit unit) {
    const QString major = UnitName(unit, EUnitForm::Abbreviated);
    if (unit == EHeightUnit::Feet) {
        return {major, UnitName(EHeightUnit::Inches, EUnitForm::Abbreviated)};
    }
    return {major, {}};
}

CUnitTexts HeightTexts(double cm, EHeightUnit unit) {
    if (unit == EHeightUnit::Feet) {
        return PairTexts(CmToWholeFeet(cm), CmToLeftoverInches(cm), 12);
    }
    return {FieldNumber(unit == EHeightUnit::Inches ? CmToInches(cm) : cm), {}};
}

double ReadHeightCm(const CUnitTexts& texts, EHeightUnit unit) {
    if (unit == EHeightUnit::Feet) {
        return FeetToCm(Typed(texts.major), Typed(texts.minor));
    }
    const double height = Typed(texts.major);
    return unit == EHeightUnit::Inches ? InchesToCm(height) : height;
}

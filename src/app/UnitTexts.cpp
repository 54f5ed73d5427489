#include "app/UnitTexts.h"

#include "platform/Messages.h"
#include "platform/NumberText.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
bool IsPair(EWeightUnit unit) {
    return unit == EWeightUnit::Stones || unit == EWeightUnit::StonesAndPounds;
}

double Typed(const QString& text) {
    return TypedNumber(text).value_or(0);
}

CUnitTexts StonesTexts(double kg, const NumberFormat& number) {
    const auto [stones, pounds] = KgToStones(kg);
    return {QString::number(stones), number(pounds)};
}

// Inches that round to a full foot are carried, so that "5 ft 12 in" is never shown. A remainder
// just below 0, left by rounding, counts as 0.
CUnitTexts FeetTexts(double cm) {
    const int feet = CmToWholeFeet(cm);
    const QString inches = FieldNumber(std::max(0.0, CmToLeftoverInches(cm)));
    if (inches == QString::number(kInchesPerFoot)) {
        return {QString::number(feet + 1), QString::number(0)};
    }
    return {QString::number(feet), inches};
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
        return StonesTexts(kg, FieldNumber);
    }
    return {FieldNumber(WeightShown(kg, unit)), {}};
}

QString WeightText(double kg, EWeightUnit unit, const NumberFormat& number) {
    if (IsPair(unit)) {
        const auto [stones, pounds] = StonesTexts(kg, number);
        return stones + u',' + pounds;
    }
    return number(WeightShown(kg, unit));
}

QString WeightChangeText(double kg, EWeightUnit unit, const NumberFormat& number) {
    return number(WeightShown(kg, unit));
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
        return FeetTexts(cm);
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

bool RefuseTooLarge(const QStringList& typed) {
    const auto large =
        std::ranges::find_if(typed, [](const QString& text) { return IsTypedTooLarge(text); });
    if (large == typed.end()) {
        return false;
    }
    ShowMessage(FormatText("The number '%s' is too large."_L1, {*large}),
                EMessageIcon::Information);
    return true;
}

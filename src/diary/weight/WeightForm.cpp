#include "diary/weight/WeightForm.h"

#include <algorithm>
#include <utility>

#include "platform/Messages.h"
#include "platform/NumberText.h"

using namespace Qt::StringLiterals;

namespace {

// Limits typed in pounds differ from the limits in kilograms by a rounding error.
constexpr double kWeightToleranceKg = 1e-9;

constexpr std::array<const char*, kTapeCount + 1> kMeasurementNames = {
    "Chest ", "Waist ", "Hips ", "Bicep ", "Forearm ", "Thigh ", "Calf ", "Body fat(%)"};

// The YMCA equation: pounds of fat = constant of the sex + 4.15 * waist - 0.082 * weight, with the
// waist in inches and the weight in pounds.
constexpr double kMaleConstant = -98.42;
constexpr double kFemaleConstant = -76.76;
constexpr double kPoundsOfFatPerWaistInch = 4.15;
constexpr double kPoundsOfFatPerPound = 0.082;

double Typed(const QString& text) {
    return TypedNumber(text).value_or(0);
}

/// Stones are typed as a whole number.
double TypedWeightKg(const CUnitTexts& texts, EWeightUnit unit) {
    if (WeightLabels(unit).minor.isEmpty()) {
        return ReadWeightKg(texts, unit);
    }
    return ReadWeightKg({QString::number(Whole(Typed(texts.major))), texts.minor}, unit);
}

}  // namespace

QString MeasurementName(int slot) {
    return QLatin1StringView(kMeasurementNames.at(static_cast<size_t>(slot)));
}

bool ShowsInches(const CPreferences& preferences) {
    return preferences.heightUnit != EHeightUnit::Centimetres;
}

QString TapeUnitName(const CPreferences& preferences) {
    return UnitName(ShowsInches(preferences) ? EHeightUnit::Inches : EHeightUnit::Centimetres,
                    EUnitForm::Abbreviated);
}

double TapeShown(double cm, const CPreferences& preferences) {
    return ShowsInches(preferences) ? CmToInches(cm) : cm;
}

bool IsEntryWeightAllowed(double weightKg) {
    return weightKg >= kLowestEntryKg - kWeightToleranceKg &&
           weightKg <= kHighestEntryKg + kWeightToleranceKg;
}

double BodyFatPercent(bool isMale, double waistCm, double weightKg) {
    const double weight = KgToPounds(weightKg);
    const double fat = (isMale ? kMaleConstant : kFemaleConstant) +
                       kPoundsOfFatPerWaistInch * CmToInches(waistCm) -
                       kPoundsOfFatPerPound * weight;
    return std::clamp(100 * fat / weight, 0.0, 100.0);
}

CWeightForm::CWeightForm(CWeightEntry entry, const CPreferences& preferences, bool isMale)
    : m_entry(std::move(entry)), m_preferences(preferences), m_isMale(isMale) {}

CWeightFields CWeightForm::GetFields() const {
    CWeightFields fields = {DateOf(m_entry.GetMoment()),
                            TimeOf(m_entry.GetMoment()),
                            WeightTexts(m_entry.GetWeightKg(), m_preferences.weightUnit),
                            {},
                            FieldNumber(m_entry.GetMeasurement(kBodyFatSlot))};
    for (int slot = 0; slot < kTapeCount; ++slot) {
        fields.tape[slot] = FieldNumber(TapeShown(m_entry.GetMeasurement(slot), m_preferences));
    }
    return fields;
}

std::optional<QString> CWeightForm::CalculateBodyFat(const CWeightFields& fields) const {
    const CWeightEntry typed = Read(fields);
    if (!IsEntryWeightAllowed(typed.GetWeightKg())) {
        ShowMessage(u"Please enter correct weight."_s, EMessageIcon::Information);
        return std::nullopt;
    }
    if (typed.GetMeasurement(kWaistSlot) <= 0) {
        ShowMessage(u"Please enter correct waist."_s, EMessageIcon::Information);
        return std::nullopt;
    }
    return FieldNumber(
        BodyFatPercent(m_isMale, typed.GetMeasurement(kWaistSlot), typed.GetWeightKg()));
}

bool CWeightForm::Confirm(const CWeightFields& fields) {
    CWeightEntry typed = Read(fields);
    if (!IsEntryWeightAllowed(typed.GetWeightKg())) {
        ShowMessage(u"Please enter correct weight."_s, EMessageIcon::Information);
        return false;
    }
    // A stored value is shown whatever its size.
    const CWeightFields shown = GetFields();
    QStringList changed = {fields.weight.minor};
    if (fields.bodyFat != shown.bodyFat) {
        changed.append(fields.bodyFat);
    }
    for (int slot = 0; slot < kTapeCount; ++slot) {
        if (fields.tape[slot] != shown.tape[slot]) {
            changed.append(fields.tape[slot]);
        }
    }
    if (RefuseTooLarge(changed)) {
        return false;
    }
    m_entry = std::move(typed);
    return true;
}

CWeightEntry CWeightForm::Read(const CWeightFields& fields) const {
    const CWeightFields shown = GetFields();
    CWeightEntry entry = m_entry;
    if (fields.date != shown.date || fields.time != shown.time) {
        entry.SetMoment(ToFileTime(fields.date, fields.time));
    }
    if (fields.weight != shown.weight) {
        entry.SetWeightKg(TypedWeightKg(fields.weight, m_preferences.weightUnit));
    }
    for (int slot = 0; slot < kTapeCount; ++slot) {
        if (fields.tape[slot] != shown.tape[slot]) {
            const double typed = Typed(fields.tape[slot]);
            entry.SetMeasurement(slot, ShowsInches(m_preferences) ? InchesToCm(typed) : typed);
        }
    }
    if (fields.bodyFat != shown.bodyFat) {
        entry.SetMeasurement(kBodyFatSlot, Typed(fields.bodyFat));
    }
    return entry;
}

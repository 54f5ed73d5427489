#include "profile/TargetsForm.h"

#include <algorithm>
#include <utility>

#include "platform/Messages.h"
#include "platform/NumberText.h"

using namespace Qt::StringLiterals;

namespace {
bool RatesInKg(EWeightUnit unit) {
    return unit == EWeightUnit::Kilograms;
}
}  // namespace

CTargetsForm::CTargetsForm(const CTargets& targets, CUserInformation user,
                           const CPreferences& preferences)
    : m_targets(targets), m_user(std::move(user)), m_preferences(preferences) {
    FillMissingEnergy(m_user, m_targets);
}

CTargetsFields CTargetsForm::GetFields() const {
    const EWeightUnit unit = m_preferences.weightUnit;
    return {m_targets.startDate, WeightTexts(m_targets.startWeightKg, unit),
            m_targets.goalDate,  WeightTexts(m_targets.goalWeightKg, unit),
            RateText(),          EnergyText()};
}

QString CTargetsForm::RateLabel() const {
    return RatesInKg(m_preferences.weightUnit) ? u"kg per week:"_s : u"lb per week:"_s;
}

QString CTargetsForm::RateText() const {
    const double rate = m_targets.rateKgPerWeek;
    return FieldNumber(RatesInKg(m_preferences.weightUnit) ? rate : KgToPounds(rate));
}

QString CTargetsForm::WeeksText() const {
    const std::optional<int> weeks = WeeksToGoal(m_targets);
    return weeks ? FormatText("%d wks"_L1, {*weeks}) : QString();
}

QString CTargetsForm::EnergyText() const {
    return QString::number(WholeEnergy(m_targets.dailyEnergyKcal, m_preferences.energyUnit));
}

QString CTargetsForm::TargetText(int nutrient) const {
    return m_preferences.FormatNutrient(nutrient, m_targets.nutrients.at(nutrient));
}

QString CTargetsForm::CalculatedText(int nutrient) const {
    if (!CanRecalculate() || nutrient >= kFirstUserNutrient) {
        return {};
    }
    CTargets targets = m_targets;
    FillMissingEnergy(m_user, targets);
    RecalculateNutrientTargets(targets);
    return m_preferences.FormatNutrient(nutrient, targets.nutrients.at(nutrient));
}

void CTargetsForm::SetFields(const CTargetsFields& typed) {
    const CTargetsFields shown = GetFields();
    CTargetsFields fields = typed;
    if (IsTypedTooLarge(fields.rate)) {
        fields.rate = shown.rate;
    }
    if (IsTypedTooLarge(fields.energy)) {
        fields.energy = shown.energy;
    }
    SetPlan(fields, shown);
    if (fields.energy != shown.energy) {
        m_targets.dailyEnergyKcal =
            EnergyStored(TypedNumber(fields.energy).value_or(0), m_preferences.energyUnit);
    }
}

void CTargetsForm::SetDietType(int dietType) {
    m_targets.dietType = dietType;
}

void CTargetsForm::TypeTarget(int nutrient, const QString& text) {
    if (text == TargetText(nutrient) || IsTypedTooLarge(text)) {
        return;
    }
    m_targets.nutrients.at(nutrient) = std::max(0.0, m_preferences.ReadNutrient(nutrient, text));
    if (nutrient < kFirstUserNutrient) {
        m_targets.dietType = kCustomDiet;
    }
}

void CTargetsForm::Recalculate() {
    FillMissingEnergy(m_user, m_targets);
    RecalculateNutrientTargets(m_targets);
}

bool CTargetsForm::Confirm() {
    if (const std::optional<QString> refusal = CheckTargets(m_targets)) {
        ShowMessage(*refusal);
        return false;
    }
    ConfirmTargets(m_user, m_targets);
    return true;
}

void CTargetsForm::SetPlan(const CTargetsFields& fields, const CTargetsFields& shown) {
    CTargetsFields plan = fields;
    plan.energy = shown.energy;
    if (plan == shown) {
        return;
    }
    const EWeightUnit unit = m_preferences.weightUnit;
    m_targets.startDate = fields.startDate;
    m_targets.goalDate = fields.goalDate;
    if (fields.startWeight != shown.startWeight) {
        m_targets.startWeightKg = ReadWeightKg(fields.startWeight, unit);
    }
    if (fields.goalWeight != shown.goalWeight) {
        m_targets.goalWeightKg = ReadWeightKg(fields.goalWeight, unit);
    }
    if (fields.rate != shown.rate) {
        const double rate = std::max(0.0, TypedNumber(fields.rate).value_or(0));
        m_targets.rateKgPerWeek = RatesInKg(unit) ? rate : PoundsToKg(rate);
        FollowRate(m_targets);
    } else if (fields.goalDate != shown.goalDate) {
        FollowGoalDate(m_targets);
    }
    m_targets.dailyEnergyKcal = PlannedEnergyKcal(m_user, m_targets);
}

// The rules of the targets dialog, without its window: texts in the profile's units go in and out,
// and every change updates the rest of the plan.
#pragma once

#include "app/Preferences.h"
#include "app/UnitTexts.h"
#include "app/UserProfile.h"

/// The texts of the fields of the plan.
struct CTargetsFields {
    QDate startDate;
    CUnitTexts startWeight;
    QDate goalDate;
    CUnitTexts goalWeight;
    QString rate;    ///< kg per week, or lb per week for every other weight unit
    QString energy;  ///< a whole number
    bool operator==(const CTargetsFields&) const = default;
};

/// A field whose text was not changed keeps its stored value, so rounding for display loses
/// nothing. A typed text without a number counts as 0.
///
/// A new rate changes the goal date, a new goal date changes the rate. Both, and the weights and
/// the start date, recalculate the daily energy; a typed daily energy stays until then.
///
/// The nutrient targets stay as stored or typed until Recalculate or Confirm: neither another diet
/// type nor a change of the plan touches them, so going back to the custom type loses nothing.
/// CalculatedText shows what they would become.
class CTargetsForm {
  public:
    /// Calculates a missing daily energy at once.
    CTargetsForm(const CTargets& targets, CUserInformation user, const CPreferences& preferences);

    [[nodiscard]] const CTargets& GetTargets() const { return m_targets; }
    [[nodiscard]] CTargetsFields GetFields() const;
    /// "kg per week:" or "lb per week:".
    [[nodiscard]] QString RateLabel() const;
    /// "%d wks", or empty.
    [[nodiscard]] QString WeeksText() const;
    [[nodiscard]] QString TargetText(int nutrient) const;
    /// What Recalculate would set the target to; empty if it would not set it.
    [[nodiscard]] QString CalculatedText(int nutrient) const;
    /// False for the custom type, whose targets are the user's.
    [[nodiscard]] bool CanRecalculate() const { return m_targets.dietType != kCustomDiet; }

    /// Takes over the fields that differ from GetFields.
    void SetFields(const CTargetsFields& typed);
    /// 0 to 6.
    void SetDietType(int dietType);
    /// Changing a target that follows from the diet type selects the custom type, so that the typed
    /// value stays.
    void TypeTarget(int nutrient, const QString& text);
    /// Sets the nutrient targets from the daily energy (calculated when missing) and the diet type.
    void Recalculate();
    /// Shows the first error and returns false, or completes the targets.
    bool Confirm();

  private:
    [[nodiscard]] QString RateText() const;
    [[nodiscard]] QString EnergyText() const;
    void SetPlan(const CTargetsFields& fields, const CTargetsFields& shown);

    CTargets m_targets;
    CUserInformation m_user;
    CPreferences m_preferences;
};

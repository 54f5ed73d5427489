// What the targets dialog decides, without its window: texts in the profile's units go in and out,
// and every change makes the rest of the plan follow.
#pragma once

#include "app/Preferences.h"
#include "app/UnitTexts.h"
#include "app/UserProfile.h"

/// The fields that the plan is typed into.
struct CTargetsFields {
    QDate startDate;
    CUnitTexts startWeight;
    QDate goalDate;
    CUnitTexts goalWeight;
    QString rate;    ///< kg per week, or lb per week for every other weight unit
    QString energy;  ///< a whole number
    bool operator==(const CTargetsFields&) const = default;
};

/// A field whose text is still the shown one keeps its stored value, so nothing is lost to the
/// rounding of what is shown. Typed texts that are no numbers count 0.
///
/// A new rate moves the goal date, a new goal date the rate. These, the weights and the start date
/// compute the daily energy again; a typed daily energy stays until then.
///
/// The nutrient targets are the stored or typed ones until Recalculate or Confirm: choosing a diet
/// type or changing the plan leaves them alone, and the custom type chosen again finds them as they
/// were. CalculatedText shows meanwhile what they would become.
class CTargetsForm {
  public:
    /// A missing daily energy is computed at once.
    CTargetsForm(const CTargets& targets, CUserInformation user, const CPreferences& preferences);

    [[nodiscard]] const CTargets& GetTargets() const { return m_targets; }
    [[nodiscard]] CTargetsFields GetFields() const;
    /// "kg per week:" or "lb per week:".
    [[nodiscard]] QString RateLabel() const;
    /// "%d wks", or empty.
    [[nodiscard]] QString WeeksText() const;
    [[nodiscard]] QString TargetText(int nutrient) const;
    /// What the daily energy and the diet type chosen now give for the target; empty where they
    /// decide nothing.
    [[nodiscard]] QString CalculatedText(int nutrient) const;
    /// The custom type leaves the targets to the user.
    [[nodiscard]] bool CanRecalculate() const { return m_targets.dietType != kCustomDiet; }

    /// Takes over the fields that differ from GetFields.
    void SetFields(const CTargetsFields& fields);
    /// 0 to 6.
    void SetDietType(int dietType);
    /// Changing a target that the diet type decides makes the type the custom one, so that the
    /// typed value stays.
    void TypeTarget(int nutrient, const QString& text);
    /// Nutrient targets from the daily energy (computed when missing) and the diet type.
    void Recalculate();
    /// Shows what is wrong and returns false, or completes the targets.
    bool Confirm();

  private:
    [[nodiscard]] QString RateText() const;
    [[nodiscard]] QString EnergyText() const;
    void SetPlan(const CTargetsFields& fields, const CTargetsFields& shown);

    CTargets m_targets;
    CUserInformation m_user;
    CPreferences m_preferences;
};

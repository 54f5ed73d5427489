// The rules of the "Edit exercise" dialog, without its window: what can be picked, what a choice
// clears, how exercise and duration give the energy, and the result.
#pragma once

#include <optional>

#include "catalogue/pick/PickForm.h"

/// Texts go in and out as the user sees them. The body weight used is that on the entry's date.
class CExerciseForm : public CPickForm {
  public:
    CExerciseForm(CVelmoraDoc& doc, const CExerciseEntry& entry);

    /// A category or name clears what depends on it and sets ten minutes. From now on the energy is
    /// no longer scaled from that of the original entry.
    EPicker Pick(EPicker picker, const QString& row) override;
    /// "Find next" needs a name from an earlier find.
    [[nodiscard]] bool HasFindTexts() const override { return !FindState().name.isEmpty(); }

    [[nodiscard]] QString HoursText() const { return m_hours; }
    [[nodiscard]] QString MinutesText() const { return m_minutes; }
    /// Recalculates the energy when either has changed; a text without a number counts as 0.
    void SetDurationTexts(const QString& hours, const QString& minutes);

    /// In the energy unit; a typed value stays until the next calculation.
    [[nodiscard]] QString EnergyText() const { return m_energy; }
    void SetEnergyText(const QString& text) { m_energy = text; }
    /// "kcal" or "kJ".
    [[nodiscard]] QString EnergyUnitText() const {
        return UnitName(Unit(), EUnitForm::Abbreviated);
    }

    /// Builds the result; false after a message when name or type is missing.
    bool Confirm();
    /// Valid after Confirm.
    [[nodiscard]] const CExerciseEntry& GetResult() const { return m_result; }

  private:
    struct CMeasured {
        double minutes;
        double energyKcal;
    };

    [[nodiscard]] ECatalogueKind Catalogue() const override { return ECatalogueKind::Exercises; }
    [[nodiscard]] qint32 CategoryId() const override { return m_categoryId; }
    [[nodiscard]] CSearchQuery SearchQuery() const override {
        return {.kinds = KindBit(ECatalogueKind::Exercises)};
    }
    bool TakeFound(ECatalogueKind kind, int position) override;
    bool Load(int position) override;
    [[nodiscard]] EEnergyUnit Unit() const { return Doc().Preferences().energyUnit; }
    void ClearExercise(const QString& name);
    [[nodiscard]] double Minutes() const;
    void ShowDuration(int minutes);
    void ShowEnergy(double energyKcal);
    void ComputeEnergy();

    CExerciseEntry m_entry;
    CExerciseEntry m_result;
    double m_weightKg;
    /// Duration and energy of an entry that has both: a new duration scales them.
    std::optional<CMeasured> m_measured;
    CExerciseItem m_picked;  ///< its name is empty until an exercise is picked

    qint32 m_categoryId;  ///< -1 when there are no categories
    QString m_hours;
    QString m_minutes;
    QString m_energy;
    QString m_shownEnergy;  ///< as computed or stored, of any size
};

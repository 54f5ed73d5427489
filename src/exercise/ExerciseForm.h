// Everything that the "Edit exercise" dialog decides: what can be picked, what is cleared, how the
// energy follows the exercise and its duration, what is handed back.
#pragma once

#include <optional>

#include "catalogue/pick/PickForm.h"

/// Texts go in and out as the user sees them. Body weight is that of the entry's date.
class CExerciseForm : public CPickForm {
  public:
    CExerciseForm(CVelmoraDoc& doc, const CExerciseEntry& entry);

    /// Category and name clear what depends on them and set ten minutes. The energy no longer
    /// follows the entry as it was opened.
    EPicker Pick(EPicker picker, const QString& row) override;
    /// Find next needs the name of a find before.
    [[nodiscard]] bool HasFindTexts() const override { return !FindState().name.isEmpty(); }

    [[nodiscard]] QString HoursText() const { return m_hours; }
    [[nodiscard]] QString MinutesText() const { return m_minutes; }
    /// Computes the energy when either has changed; a text without a number counts 0.
    void SetDurationTexts(const QString& hours, const QString& minutes);

    /// In the energy unit; a typed value stands until the next computed one.
    [[nodiscard]] QString EnergyText() const { return m_energy; }
    void SetEnergyText(const QString& text) { m_energy = text; }
    /// "kcal" or "kJ".
    [[nodiscard]] QString EnergyUnitText() const {
        return UnitName(Unit(), EUnitForm::Abbreviated);
    }

    /// Builds the result; false after the message that says why the dialog stays open.
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
    CExerciseItem m_picked;  ///< without a name until there is one

    qint32 m_categoryId;  ///< -1 when there are no categories
    QString m_hours;
    QString m_minutes;
    QString m_energy;
};

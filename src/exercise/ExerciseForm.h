// Everything that the "Edit exercise" dialog decides: what can be picked, what is cleared, how the
// energy follows the exercise and its duration, what is handed back.
#pragma once

#include <QStringList>
#include <QTime>
#include <optional>

#include "app/VelmoraDoc.h"
#include "diary/AddFoodForm.h"

/// Texts go in and out as the user sees them. Body weight is that of the entry's date.
class CExerciseForm {
  public:
    CExerciseForm(CVelmoraDoc& doc, const CExerciseEntry& entry);

    /// What the picker lists; empty after the message that says why there is nothing to pick.
    QStringList Choices(EPicker picker);
    /// Takes the chosen row. Category and name clear what depends on them and set ten minutes;
    /// the type loads the exercise. The energy no longer follows the entry as it was opened.
    void Pick(EPicker picker, const QString& row);

    /// The document's last find of an exercise.
    [[nodiscard]] CFindState& FindState() const {
        return m_doc.CatalogueState(ECatalogueKind::Exercises).find;
    }
    /// Find next needs the name of a find before.
    [[nodiscard]] bool HasFindName() const { return !FindState().name.isEmpty(); }
    /// Both load the next match into the form and return true; false after "Exercise not found."
    /// or "Cannot load exercise.", with the form as it was. Find starts at the first exercise.
    bool Find(const QString& name, const QStringList& types);
    bool FindNext();

    [[nodiscard]] QString CategoryText() const;
    [[nodiscard]] QString NameText() const { return m_name; }
    void SetNameText(const QString& text) { m_name = text; }
    [[nodiscard]] QString TypeText() const { return m_type; }
    void SetTypeText(const QString& text) { m_type = text; }

    [[nodiscard]] QString HoursText() const { return m_hours; }
    [[nodiscard]] QString MinutesText() const { return m_minutes; }
    /// Computes the energy when either has changed; what is no number counts 0.
    void SetDurationTexts(const QString& hours, const QString& minutes);

    [[nodiscard]] QTime GetTime() const { return m_time; }
    void SetTime(QTime time) { m_time = time; }

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

    [[nodiscard]] EEnergyUnit Unit() const { return m_doc.Preferences().energyUnit; }
    void ClearExercise(const QString& name);
    bool Load(int position);
    bool LoadFound(int position);
    [[nodiscard]] double Minutes() const;
    void ShowDuration(int minutes);
    void ShowEnergy(double energyKcal);
    void ComputeEnergy();

    CVelmoraDoc& m_doc;
    CExerciseEntry m_entry;
    CExerciseEntry m_result;
    double m_weightKg;
    /// Duration and energy of an entry that has both: a new duration scales them.
    std::optional<CMeasured> m_measured;
    CExerciseItem m_picked;  ///< without a name until there is one

    qint32 m_categoryId;  ///< -1 when there are no categories
    QString m_name;
    QString m_type;
    QString m_hours;
    QString m_minutes;
    QTime m_time;
    QString m_energy;
};

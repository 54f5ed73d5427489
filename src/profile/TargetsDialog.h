// "Targets": the plan from start to goal, the daily energy, and the target of every nutrient.
#pragma once

#include "controls/Dialog.h"
#include "profile/TargetsForm.h"

class CGrid;
class CUnitEdit;
class QComboBox;
class QDateEdit;
class QLabel;
class QLineEdit;
class QPushButton;

/// Command "Recalc. nutruents using daily energy".
inline constexpr int kRecalculateCommand = 65049;

class CTargetsDialog : public CDialog {
    Q_OBJECT
  public:
    CTargetsDialog(const CTargets& targets, const CUserInformation& user,
                   const CPreferences& preferences, const QStringList& nutrientNames,
                   QWidget* parent);
    [[nodiscard]] const CTargets& GetTargets() const { return m_form.GetTargets(); }

  protected:
    bool Confirm() override;

  private:
    void AddPlan(const CPreferences& preferences);
    void AddNutrients(const QStringList& names);
    void ConnectFields();
    /// Passes every field to the form, then shows the result.
    void ReadFields();
    void ShowForm();

    CTargetsForm m_form;
    QDateEdit* m_startDate;
    CUnitEdit* m_startWeight;
    QDateEdit* m_goalDate;
    CUnitEdit* m_goalWeight;
    QLineEdit* m_rate;
    QLabel* m_weeks;
    QLineEdit* m_energy;
    QComboBox* m_dietType;
    QPushButton* m_recalculate;
    CGrid* m_nutrients;
};

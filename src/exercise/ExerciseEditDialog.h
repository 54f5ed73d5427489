// The "Edit exercise" dialog: what was done, for how long and when, and the energy it burned.
#pragma once

#include "catalogue/pick/PickDialog.h"
#include "exercise/ExerciseForm.h"

class QLineEdit;

/// Shows a form and passes it what the user does. The form has the rules and outlives the dialog.
class CExerciseEditDialog : public CPickDialog {
    Q_OBJECT
  public:
    CExerciseEditDialog(CExerciseForm& form, QWidget* parent);

  protected:
    bool Confirm() override;
    void ShowForm() override;
    void ContinueWith(EPicker next) override;
    void ContinueWithFound() override { ContinueWith(EPicker::None); }

  private:
    void AddFields();
    QLayout* CreateDurationRow();
    QLayout* CreateEnergyRow();

    CExerciseForm& m_form;
    QComboBox* m_hours = nullptr;
    QComboBox* m_minutes = nullptr;
    QLineEdit* m_energy = nullptr;
};

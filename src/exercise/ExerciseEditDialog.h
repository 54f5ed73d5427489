// The "Edit exercise" dialog: what was done, for how long and when, and the energy it burned.
#pragma once

#include "controls/Dialog.h"
#include "exercise/ExerciseForm.h"

class CPickField;
class CPickList;
class QComboBox;
class QLineEdit;
class QTimeEdit;

/// Shows a form and brings it what the user does; the form decides and outlives it.
class CExerciseEditDialog : public CDialog {
    Q_OBJECT
  public:
    CExerciseEditDialog(CExerciseForm& form, QWidget* parent);

    /// The wheel scrolls the dialog and turns a duration only where the user is at it.
    bool eventFilter(QObject* watched, QEvent* event) override;

  protected:
    bool CloseOverlay() override;
    bool Confirm() override;

  private:
    void AddFields();
    QWidget* AddDurationRow();
    QWidget* AddTimeRow();
    QWidget* AddEnergyRow();

    /// Texts of the fields into the form, and back; duration and energy are in the form already.
    void ReadFields();
    void ShowForm();

    void OpenPicker(EPicker picker);
    void TakePicked(const QString& row);
    void Find();
    void FindNext();
    [[nodiscard]] CPickField* FieldOf(EPicker picker) const;

    CExerciseForm& m_form;
    EPicker m_picker = EPicker::None;

    CPickField* m_category;
    CPickField* m_name;
    CPickField* m_type;
    QComboBox* m_hours;
    QComboBox* m_minutes;
    QTimeEdit* m_time;
    QLineEdit* m_energy;
    CPickList* m_pickList;
};

// The "Weight edit" dialog: date and time, weight, measurements and body fat.
#pragma once

#include "controls/Dialog.h"
#include "diary/weight/WeightForm.h"

class CUnitEdit;
class QDateEdit;
class QTimeEdit;

/// Shows a form and passes it what the user types. The form has the rules and outlives the dialog.
class CWeightEditDialog : public CDialog {
    Q_OBJECT
  public:
    CWeightEditDialog(CWeightForm& form, QWidget* parent);

    /// Shows the on-screen keyboard while a field has the focus. Keys that a dialog would handle,
    /// such as Return and Escape, stay in the field, so that a slip does not lose what was typed.
    bool eventFilter(QObject* watched, QEvent* event) override;

  protected:
    bool Confirm() override;

  private:
    void AddFields();
    void AddBodyFatButton();
    void ShowFields();
    [[nodiscard]] CWeightFields ReadFields() const;

    CWeightForm& m_form;
    QDateEdit* m_date;
    QTimeEdit* m_time;
    CUnitEdit* m_weight;
    std::array<CUnitEdit*, kTapeCount> m_tape;
    CUnitEdit* m_bodyFat;
};

// The "Weight edit" dialog: a weight with its moment, measurements and body fat.
#pragma once

#include "controls/Dialog.h"
#include "diary/WeightForm.h"

class CUnitEdit;
class QDateEdit;
class QTimeEdit;

/// Shows a form and brings it what the user typed; the form decides and outlives it.
class CWeightEditDialog : public CDialog {
    Q_OBJECT
  public:
    CWeightEditDialog(CWeightForm& form, QWidget* parent);

    /// The on-screen keyboard follows the focus. Keys that a dialog would take stay in a field,
    /// where nothing typed is to be lost by a slip.
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

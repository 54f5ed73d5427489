// "Diet move": the date, time and meal that entries go to.
#pragma once

#include "controls/Dialog.h"
#include "diary/DietRules.h"

class QComboBox;
class QDateEdit;
class QTimeEdit;

class CDietMoveDialog : public CDialog {
    Q_OBJECT
  public:
    CDietMoveDialog(const CDietPlace& place, QWidget* parent);
    /// As the fields stand.
    [[nodiscard]] CDietPlace GetPlace() const;

  private:
    QDateEdit* m_date;
    QTimeEdit* m_time;
    QComboBox* m_meal;
};

// "Diet move": the date, time and meal to move entries to.
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
    /// The current values of the fields.
    [[nodiscard]] CDietPlace GetPlace() const;

  private:
    QDateEdit* m_date;
    QTimeEdit* m_time;
    QComboBox* m_meal;
};

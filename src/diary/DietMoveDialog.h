// "Diet move": the date, time and meal to move entries to, or to copy them to.
#pragma once

#include "controls/Dialog.h"
#include "diary/DietRules.h"

class QComboBox;
class QDateEdit;
class QTimeEdit;

class CDietMoveDialog : public CDialog {
    Q_OBJECT
  public:
    enum class EPurpose { Move, Copy };
    CDietMoveDialog(const CDietPlace& place, QWidget* parent, EPurpose purpose = EPurpose::Move);
    /// The current values of the fields.
    [[nodiscard]] CDietPlace GetPlace() const;

  private:
    QDateEdit* m_date;
    QTimeEdit* m_time;
    QComboBox* m_meal;
};

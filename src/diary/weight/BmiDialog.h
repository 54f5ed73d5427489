// The "BMI" dialog: the user's body mass index and the table around it.
#pragma once

#include "controls/Dialog.h"
#include "diary/weight/BmiTable.h"

class CBmiDialog : public CDialog {
    Q_OBJECT
  public:
    CBmiDialog(const CBmiView& bmi, QWidget* parent);
};

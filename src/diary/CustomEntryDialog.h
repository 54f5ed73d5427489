// "Custom entry": name and values of something eaten that is in no catalogue.
#pragma once

#include "controls/Dialog.h"
#include "diary/CustomEntryForm.h"

class QLineEdit;
class QTimeEdit;

/// Shows a form and passes it what the user does. The form outlives the dialog.
class CCustomEntryDialog : public CDialog {
    Q_OBJECT
  public:
    CCustomEntryDialog(CCustomEntryForm& form, QWidget* parent);

  protected:
    bool Confirm() override;

  private:
    CCustomEntryForm& m_form;
    QLineEdit* m_name;
    QTimeEdit* m_time;
};

// The "Add Food" dialog: what was eaten, how much and when.
#pragma once

#include "catalogue/pick/AddFoodForm.h"
#include "catalogue/pick/PickDialog.h"

class CDropField;
class CGrid;
class QLineEdit;
class QTabBar;

/// Shows a form and passes it what the user does. The form has the rules and outlives the dialog.
class CAddFoodDialog : public CPickDialog {
    Q_OBJECT
  public:
    CAddFoodDialog(CAddFoodForm& form, QWidget* parent);
    ~CAddFoodDialog() override;

  protected:
    bool Confirm() override;
    void ReadFields() override;
    void ShowForm() override;
    /// Also opens the next pick list.
    void ContinueWith(EPicker next) override;
    /// The amount is what remains to be typed.
    void ContinueWithFound() override;

  private:
    void AddKindTabs();
    void AddFields();
    QLayout* CreateServingRow();
    void ShowValues();

    CAddFoodForm& m_form;
    QTabBar* m_kinds = nullptr;
    CDropField* m_serving = nullptr;
    QLineEdit* m_amount = nullptr;
    CGrid* m_values = nullptr;
};

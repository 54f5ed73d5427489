// The "Add Food" dialog: what was eaten, how much of it and when.
#pragma once

#include "catalogue/pick/AddFoodForm.h"
#include "catalogue/pick/PickDialog.h"

class CGrid;
class QLineEdit;
class QTabBar;

/// Shows a form and brings it what the user does; the form decides and outlives it.
class CAddFoodDialog : public CPickDialog {
    Q_OBJECT
  public:
    CAddFoodDialog(CAddFoodForm& form, QWidget* parent);
    ~CAddFoodDialog() override;

  protected:
    bool Confirm() override;
    void ReadFields() override;
    void ShowForm() override;
    /// Opens the next pick list at once.
    void GoOn(EPicker next) override;

  private:
    void AddKindTabs();
    void AddFields();
    QWidget* AddServingRow();
    void AddValues();

    CAddFoodForm& m_form;
    QTabBar* m_kinds = nullptr;
    QComboBox* m_serving = nullptr;
    QLineEdit* m_amount = nullptr;
    CGrid* m_values = nullptr;
};

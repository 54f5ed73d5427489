// The "Add Food" dialog: what was eaten, how much of it and when.
#pragma once

#include "controls/Dialog.h"
#include "diary/AddFoodForm.h"

class CGrid;
class CPickField;
class CPickList;
class QComboBox;
class QLineEdit;
class QTabBar;
class QTimeEdit;

/// Shows a form and brings it what the user does; the form decides and outlives it.
class CAddFoodDialog : public CDialog {
    Q_OBJECT
  public:
    CAddFoodDialog(CAddFoodForm& form, QWidget* parent);
    ~CAddFoodDialog() override;

  protected:
    bool CloseOverlay() override;
    bool Confirm() override;

  private:
    void AddKindTabs();
    void AddFields();
    QWidget* AddServingRow();
    QWidget* AddTimeRow();
    void AddValues();

    /// Texts of the fields into the form, and back.
    void ReadFields();
    void ShowForm();

    void OpenPicker(EPicker picker);
    void TakePicked(const QString& row);
    void Find();
    void FindNext();
    [[nodiscard]] CPickField* FieldOf(EPicker picker) const;

    CAddFoodForm& m_form;
    EPicker m_picker = EPicker::None;

    QTabBar* m_kinds;
    CPickField* m_category;
    CPickField* m_name;
    CPickField* m_type;
    QComboBox* m_serving;
    QLineEdit* m_amount;
    QTimeEdit* m_time;
    std::vector<QWidget*> m_findButtons;
    CGrid* m_values;
    CPickList* m_pickList;
};

// The dialogs "Menu" and "Recipe": one dialog over one form.
#pragma once

#include "catalogue/ComposedForm.h"
#include "controls/Dialog.h"

class CGrid;
class CReportList;
class QComboBox;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QTabWidget;

/// Shows a form and brings it what the user does; the form decides and outlives it.
class CComposedEditDialog : public CDialog {
    Q_OBJECT
  public:
    CComposedEditDialog(CComposedForm& form, QWidget* parent);
    ~CComposedEditDialog() override;

  protected:
    /// OK and Cancel end an open cell and nothing else.
    bool CloseOverlay() override;
    bool Confirm() override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void AddFields();
    QWidget* MakeNutrientsPage();
    QWidget* MakeFoodsPage();
    QWidget* MakeInstructionsPage();
    void AddRecalculate();

    void ReadFields();
    void ShowNutrients();
    /// Selects `row`, or the last one.
    void ShowComponents(int row);

    void AddComponent();
    void EditComponent();
    void DeleteComponents();
    void Recalculate();
    void SaveAsText();

    CComposedForm& m_form;
    QLineEdit* m_name = nullptr;
    QComboBox* m_category = nullptr;
    QLineEdit* m_servings = nullptr;           ///< recipes alone
    QPlainTextEdit* m_instructions = nullptr;  ///< recipes alone
    QTabWidget* m_pages = nullptr;
    CGrid* m_nutrients = nullptr;
    CReportList* m_components = nullptr;
    QPushButton* m_recalculate = nullptr;
};

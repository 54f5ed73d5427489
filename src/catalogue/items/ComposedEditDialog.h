// The dialogs "Menu" and "Recipe": one dialog over one form.
#pragma once

#include <functional>

#include "catalogue/items/ComposedForm.h"
#include "controls/Dialog.h"

class CGrid;
class CReportList;
class QComboBox;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QTabWidget;

/// What the view that shows the dialog does for it.
struct CComposedEditServices {
    /// Lets the user choose a food or recipe, starting from `component` unless that is null. `take`
    /// stores the choice and returns whether the choosing is over. False when it was cancelled.
    std::function<bool(QWidget* parent, const CComposedItem* component,
                       const std::function<bool(const CChosenFood&)>& take)>
        chooseFood;
    /// Saves the recipe as it is now as a text file.
    std::function<void(const CComposedForm&)> saveAsText;
};

/// Shows a form and brings it what the user does; the form decides and outlives it.
class CComposedEditDialog : public CDialog {
    Q_OBJECT
  public:
    CComposedEditDialog(CComposedForm& form, CComposedEditServices services, QWidget* parent);
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
    CComposedEditServices m_services;
    QLineEdit* m_name = nullptr;
    QComboBox* m_category = nullptr;
    QLineEdit* m_servings = nullptr;           ///< recipes alone
    QPlainTextEdit* m_instructions = nullptr;  ///< recipes alone
    QTabWidget* m_pages = nullptr;
    CGrid* m_nutrients = nullptr;
    CReportList* m_components = nullptr;
    QPushButton* m_recalculate = nullptr;
};

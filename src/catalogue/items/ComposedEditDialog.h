// The dialogs "Menu" and "Recipe".
#pragma once

#include <functional>

#include "catalogue/items/ComposedForm.h"
#include "controls/Dialog.h"

class CGrid;
class CReportList;
class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QTabWidget;

/// What the dialog needs from the view that shows it.
struct CComposedEditServices {
    /// Lets the user choose a food or recipe, starting from `component` unless that is null. `take`
    /// stores the choice and returns whether the dialog may close. False when it was cancelled.
    std::function<bool(QWidget* parent, const CComposedItem* component,
                       const std::function<bool(const CChosenFood&)>& take)>
        chooseFood;
    /// Saves the current content of the form as a text file.
    std::function<void(const CComposedForm&)> saveAsText;
};

/// Shows a form and passes it what the user does. The form has the rules and outlives the dialog.
class CComposedEditDialog : public CDialog {
    Q_OBJECT
  public:
    CComposedEditDialog(CComposedForm& form, CComposedEditServices services, QWidget* parent);
    ~CComposedEditDialog() override;

  protected:
    /// While a cell is being edited, OK and Cancel only end that.
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
    QLineEdit* m_servings = nullptr;           ///< recipes only
    QPlainTextEdit* m_instructions = nullptr;  ///< recipes only
    QTabWidget* m_pages = nullptr;
    CGrid* m_nutrients = nullptr;
    CReportList* m_components = nullptr;
    QPushButton* m_recalculate = nullptr;
    QLabel* m_lacksValues = nullptr;
};

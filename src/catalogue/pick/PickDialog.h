// The base of the dialogs that pick an item of the catalogue: its fields, the pick list over them,
// find, and the time of the entry.
#pragma once

#include <vector>

#include "catalogue/pick/FindDialog.h"
#include "catalogue/pick/PickForm.h"

class CPickField;
class CPickList;
class CSearchField;
class QComboBox;
class QFormLayout;
class QHBoxLayout;
class QLayout;
class QTimeEdit;

/// Shows a form and passes it what the user does. The form has the rules and outlives the dialog.
/// Derived dialogs add their rows in order and the pick list last.
class CPickDialog : public CDialog {
    Q_OBJECT
  protected:
    struct CFindTexts {
        const char* prompt;
        CFindDialog::EFields fields;
        const char* find;      ///< tip of its button
        const char* findNext;  ///< tip of its button
    };
    CPickDialog(const QString& title, CPickForm& form, const CFindTexts& texts, QWidget* parent);

    bool CloseOverlay() override;

    /// The field that finds items by typing, over all others.
    void AddSearchField();
    /// Category, name and type.
    void AddPickFields(QFormLayout* form);
    /// Time and the find buttons.
    void AddTimeRow(QFormLayout* form, const QString& label);
    void AddPickList();
    /// Label and fields have one parent, since Qt looks for a field's label among its
    /// siblings.
    static void AddRow(QFormLayout* form, const QString& label, QLayout* row, QWidget* buddy);
    static QHBoxLayout* CreateRow();
    /// Makes a combo box editable, for texts of up to `length` UTF-16 units, `characters` wide.
    static void SetUpListField(QComboBox* field, const QString& name, int characters, int length);

    /// Passes the fields' texts to the form.
    virtual void ReadFields();
    /// Shows the form's texts in the fields.
    virtual void ShowForm();
    /// Called after a row was picked; `next` is the picker that follows.
    virtual void ContinueWith(EPicker next) = 0;

    /// Called after the search field or a find has loaded an item.
    virtual void ContinueWithFound() = 0;

    void OpenPicker(EPicker picker);
    [[nodiscard]] CSearchField* SearchField() const { return m_search; }
    [[nodiscard]] CPickField* FieldOf(EPicker picker) const;
    [[nodiscard]] QTimeEdit* TimeField() const { return m_time; }
    void SetFindVisible(bool isVisible);

  private:
    CPickField* AddPickField(QFormLayout* form, EPicker picker, const QString& name);
    void Find();
    void FindNext();

    CPickForm& m_form;
    CFindTexts m_texts;
    EPicker m_picker = EPicker::None;

    CSearchField* m_search = nullptr;
    CSearchItems m_found;
    CPickField* m_category = nullptr;
    CPickField* m_name = nullptr;
    CPickField* m_type = nullptr;
    QTimeEdit* m_time = nullptr;
    std::vector<QWidget*> m_findButtons;
    CPickList* m_pickList = nullptr;
};

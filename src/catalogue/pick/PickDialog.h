// The frame of the dialogs that pick an item of the catalogue: its fields, the pick list over them,
// finding, and the time of the entry.
#pragma once

#include <vector>

#include "catalogue/pick/FindDialog.h"
#include "catalogue/pick/PickForm.h"

class CPickField;
class CPickList;
class QComboBox;
class QFormLayout;
class QHBoxLayout;
class QTimeEdit;

/// Shows a form and brings it what the user does; the form decides and outlives it. Derived dialogs
/// add their rows in their order and the pick list last.
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

    /// Category, name and type.
    void AddPickFields(QFormLayout* form);
    /// Time and the find buttons.
    void AddTimeRow(QFormLayout* form, const QString& label);
    void AddPickList();
    static void AddRow(QFormLayout* form, const QString& label, QWidget* row, QWidget* buddy);
    static QHBoxLayout* RowLayout(QWidget* row);
    /// An editable drop-down for texts of up to `length`, as wide as `characters`.
    QComboBox* CreateListField(const QString& name, int characters, int length, QWidget* row);

    /// Texts of the fields into the form, and back.
    virtual void ReadFields();
    virtual void ShowForm();
    /// After a row was picked; `next` as told by the form.
    virtual void GoOn(EPicker next) = 0;

    void OpenPicker(EPicker picker);
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

    CPickField* m_category = nullptr;
    CPickField* m_name = nullptr;
    CPickField* m_type = nullptr;
    QTimeEdit* m_time = nullptr;
    std::vector<QWidget*> m_findButtons;
    CPickList* m_pickList = nullptr;
};

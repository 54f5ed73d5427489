// The find dialog of the catalogue and of the diaries.
#pragma once

#include "app/VelmoraDoc.h"
#include "controls/Dialog.h"

class QLineEdit;

class CFindDialog : public CDialog {
    Q_OBJECT
  public:
    enum class EFields { Name, NameAndType };
    /// Opens with the texts of the last find. `prompt` such as "Please enter food name and/or
    /// type:". All fields empty is refused with "Please enter at least one item for find.".
    CFindDialog(const QString& prompt, const CFindState& last, EFields fields, QWidget* parent);
    [[nodiscard]] QString GetName() const;
    [[nodiscard]] QString GetType() const;

  protected:
    bool Confirm() override;

  private:
    QLineEdit* m_name;
    QLineEdit* m_type;  ///< hidden and empty where items have names alone
};

// The find dialog of the catalogue and of the diaries.
#pragma once

#include <vector>

#include "app/VelmoraDoc.h"
#include "controls/Dialog.h"

class QLineEdit;

class CFindDialog : public CDialog {
    Q_OBJECT
  public:
    /// Which fields the dialog has.
    enum class EFields { Name, NameAndType, NameAndThreeTypes };
    /// Opens with the texts of the last find. `prompt` such as "Please enter food name and/or
    /// type:". All fields empty is refused with "Please enter at least one item for find.".
    CFindDialog(const QString& prompt, const CFindState& last, EFields fields, QWidget* parent);
    [[nodiscard]] QString GetName() const;
    /// One text per type field, including empty ones.
    [[nodiscard]] QStringList GetTypes() const;

  protected:
    bool Confirm() override;

  private:
    QLineEdit* m_name;
    std::vector<QLineEdit*> m_types;
};

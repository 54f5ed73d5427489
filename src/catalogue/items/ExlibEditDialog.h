// The "Edit exlib" dialog, for a new or an existing exercise of the library.
#pragma once

#include "app/VelmoraDoc.h"
#include "catalogue/items/CatalogueChoices.h"
#include "catalogue/items/ExlibRules.h"
#include "controls/Dialog.h"

class CPickField;
class CPickList;
class QCheckBox;
class QLabel;
class QLineEdit;

class CExlibEditDialog : public CDialog {
    Q_OBJECT
  public:
    /// `position` -1 for a new exercise.
    CExlibEditDialog(CVelmoraDoc& doc, const CExerciseItem& item, int position, QWidget* parent);
    /// The exercise as confirmed.
    [[nodiscard]] const CExerciseItem& GetItem() const { return m_item; }

  protected:
    bool CloseOverlay() override;
    bool Confirm() override;

  private:
    QWidget* MakeEnergyRow(const CExlibFields& fields);
    [[nodiscard]] CExlibFields ReadFields() const;
    void OpenPicker(EPicker picker, CPickField* field);
    void ShowUnit();
    /// Switching between MET and energy clears the value.
    void ChangeRating();

    CVelmoraDoc& m_doc;
    CExerciseItem m_item;
    int m_position;

    CPickField* m_name = nullptr;
    CPickField* m_type = nullptr;
    CPickField* m_category = nullptr;
    QLineEdit* m_energy = nullptr;
    QLabel* m_unit = nullptr;
    QCheckBox* m_met = nullptr;
    CPickList* m_pickList;
    CPickField* m_picking = nullptr;  ///< the field that the pick list is open for
};

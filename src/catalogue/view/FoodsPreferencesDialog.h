// The foods preferences: which nutrients are used and what the user-defined ones are called, and
// how the foods window behaves.
#pragma once

#include "app/VelmoraDoc.h"
#include "catalogue/items/CatalogueViewSettings.h"
#include "controls/Dialog.h"

class CFoodsPreferencesDialog : public CDialog {
    Q_OBJECT
  public:
    CFoodsPreferencesDialog(CVelmoraDoc& doc, QWidget* parent);
    ~CFoodsPreferencesDialog() override;

  protected:
    bool Confirm() override;

  private:
    struct CFields;

    QWidget* MakeNutrientsTab();
    QWidget* MakeDisplayTab(const CCatalogueViewSettings& settings);
    void SaveNames();

    CVelmoraDoc& m_doc;
    std::unique_ptr<CFields> m_fields;
};

// The foods preferences: displayed nutrients, names of the user-defined ones, and settings of the
// foods window.
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
    /// False when the volume was lost, after a message.
    bool SaveNames();
    bool SaveSettings();

    CVelmoraDoc& m_doc;
    std::unique_ptr<CFields> m_fields;
};

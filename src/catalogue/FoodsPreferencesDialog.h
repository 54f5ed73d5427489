// The foods preferences: which nutrients are used and what the user-defined ones are called, and
// how the foods window behaves.
#pragma once

#include "app/VelmoraDoc.h"
#include "controls/Dialog.h"

/// Settings of the foods window, kept in the view-settings record of the Foods database.
struct CFoodsViewSettings {
    bool confirmServingChange = true;  ///< "Show when change serving method"
    bool namesInTree = true;           ///< "Show food names in category tree"
    int splitterPerMille = 400;        ///< the tree's share of the window
    bool starterOffered = false;       ///< the starter foods were offered and not wanted

    static CFoodsViewSettings Load(CDatabase& database);
    bool Save(CDatabase& database) const;
};

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
    QWidget* MakeDisplayTab(const CFoodsViewSettings& settings);
    void SaveNames();

    CVelmoraDoc& m_doc;
    std::unique_ptr<CFields> m_fields;
};

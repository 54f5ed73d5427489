// The foods window: categories with their food names in a tree, foods in a list.
#pragma once

#include "catalogue/CatalogueView.h"
#include "catalogue/FoodsPreferencesDialog.h"

class CFoodsMainView : public CCatalogueView {
    Q_OBJECT
  public:
    CFoodsMainView(CVelmoraDoc& doc, QWidget* parent);

    void StoreLayout() override;
    void DataChanged() override;

  protected:
    EEdited EditItem(int position, qint32 categoryId) override;
    std::vector<QAction*> Tools() override;
    void showEvent(QShowEvent* event) override;

  private:
    void OpenPreferences();
    /// Asks once whether an empty catalogue should start with the foods that ship with the program.
    void OfferStarterFoods();
    void ImportStarterFoods();

    CFoodsViewSettings m_settings;
    bool m_offered = false;
};

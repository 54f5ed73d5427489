// The exercise library's window: categories with their exercise names in a tree, exercises and
// their energy in a list.
#pragma once

#include "catalogue/CatalogueView.h"
#include "exercise/ExlibPreferencesDialog.h"

class CExlibMainView : public CCatalogueView {
    Q_OBJECT
  public:
    CExlibMainView(CVelmoraDoc& doc, QWidget* parent);

    void StoreLayout() override;
    void DataChanged() override;

  protected:
    EEdited EditItem(int position, qint32 categoryId) override;
    std::vector<QAction*> Tools() override;

  private:
    QString EnergyText(const CCategoryListEntry& entry);
    void OpenPreferences();

    CExlibViewSettings m_settings;
};

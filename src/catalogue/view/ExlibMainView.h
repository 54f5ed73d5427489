// The exercise library's window: categories with their exercise names in a tree, exercises and
// their energy in a list.
#pragma once

#include "catalogue/view/TypedMainView.h"

class CExlibMainView : public CTypedMainView {
    Q_OBJECT
  public:
    CExlibMainView(CVelmoraDoc& doc, QWidget* parent);

  protected:
    EEdited EditItem(int position, qint32 categoryId) override;
    bool AskPreferences() override;

  private:
    CCatalogueBrowser::CAddedCell EnergyCell(const CCategoryListEntry& entry);
};

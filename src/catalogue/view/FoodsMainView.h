// The foods window: categories with their food names in a tree, foods in a list.
#pragma once

#include "catalogue/view/TypedMainView.h"

class CFoodsMainView : public CTypedMainView {
    Q_OBJECT
  public:
    CFoodsMainView(CVelmoraDoc& doc, QWidget* parent);

  protected:
    EEdited EditItem(int position, qint32 categoryId) override;
    bool AskPreferences() override;
    std::vector<QAction*> FileTail() override;
    void showEvent(QShowEvent* event) override;

  private:
    void ImportTables();

    bool m_offered = false;
};

// The windows of menus and of recipes: the catalogue view with the kind's dialog.
#pragma once

#include "catalogue/view/CatalogueView.h"

class CComposedMainView : public CCatalogueView {
    Q_OBJECT
  public:
    CComposedMainView(CVelmoraDoc& doc, ECatalogueKind kind, QWidget* parent);

  protected:
    EEdited EditItem(int position, qint32 categoryId) override;

  private:
    ECatalogueKind m_kind;
};

class CMenusMainView : public CComposedMainView {
    Q_OBJECT
  public:
    CMenusMainView(CVelmoraDoc& doc, QWidget* parent)
        : CComposedMainView(doc, ECatalogueKind::Menus, parent) {}
};

class CRecipesMainView : public CComposedMainView {
    Q_OBJECT
  public:
    CRecipesMainView(CVelmoraDoc& doc, QWidget* parent)
        : CComposedMainView(doc, ECatalogueKind::Recipes, parent) {}
};

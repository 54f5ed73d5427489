#include "catalogue/ComposedMainView.h"

#include "catalogue/ComposedEditDialog.h"

CComposedMainView::CComposedMainView(CVelmoraDoc& doc, const CCatalogueTexts& texts,
                                     QWidget* parent)
    : CCatalogueView(doc, texts, parent), m_kind(texts.kind) {
    CComposedMainView::DataChanged();
}

CComposedMainView::EEdited CComposedMainView::EditItem(int position, qint32 categoryId) {
    CComposedForm form(Doc(), m_kind, position, categoryId);
    if (!form.IsLoaded()) {
        return EEdited::Failed;
    }
    CComposedEditDialog dialog(form, this);
    if (dialog.exec() != QDialog::Accepted) {
        return EEdited::Cancelled;
    }
    ShowStored(form.GetStoredPosition());
    return EEdited::Stored;
}

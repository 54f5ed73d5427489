#include "catalogue/view/ComposedMainView.h"

#include "catalogue/exchange/RecipeText.h"
#include "catalogue/items/ComposedEditDialog.h"
#include "catalogue/pick/AddFoodDialog.h"

CComposedMainView::CComposedMainView(CVelmoraDoc& doc, ECatalogueKind kind, QWidget* parent)
    : CCatalogueView(doc, kind, parent), m_kind(kind) {
    CComposedMainView::DataChanged();
}

CComposedMainView::EEdited CComposedMainView::EditItem(int position, qint32 categoryId) {
    CComposedForm form(Doc(), m_kind, position, categoryId);
    if (!form.IsLoaded()) {
        return EEdited::Failed;
    }
    const auto chooseFood = [this](QWidget* parent, const CComposedItem* component,
                                   const std::function<bool(const CChosenFood&)>& take) {
        CAddFoodForm chosen(Doc(), component == nullptr
                                       ? CAddFoodRequest::ForNewComponent()
                                       : CAddFoodRequest::ForComponent(Database(), *component));
        CAddFoodDialog dialog(chosen, parent);
        dialog.SetOnConfirmed([&] { return take(chosen.GetResult()); });
        return dialog.exec() == QDialog::Accepted;
    };
    // A failed save has shown its message.
    const auto saveAsText = [](const CComposedForm& recipe) { (void)SaveRecipeText(recipe); };
    CComposedEditDialog dialog(form, {chooseFood, saveAsText}, this);
    if (dialog.exec() != QDialog::Accepted) {
        return EEdited::Cancelled;
    }
    ShowStored(form.GetStoredPosition());
    return EEdited::Stored;
}

// What the windows of foods and of exercises have in common: items with name and type, names in the
// tree, preferences, and stored settings.
#pragma once

#include <QDialog>

#include "app/ListCommands.h"
#include "catalogue/items/CatalogueViewSettings.h"
#include "catalogue/view/CatalogueView.h"
#include "store/Step.h"

class CTypedMainView : public CCatalogueView {
    Q_OBJECT
  public:
    void StoreLayout() override;
    void DataChanged() override;

  protected:
    /// A derived view calls DataChanged when its columns are complete.
    CTypedMainView(CVelmoraDoc& doc, ECatalogueKind kind, QWidget* parent);

    /// Shows the preferences; true when they were left with OK.
    virtual bool AskPreferences() = 0;
    std::vector<QAction*> Tools() override;
    /// Opens the kind's dialog for the item at `position`, or for `item` if that is -1, then stores
    /// and selects the result.
    template <typename Dialog, typename Item>
    EEdited EditWith(CItemDatabase<Item>& items, int position, Item& item) {
        if (position >= 0 && !items.Read(position, item)) {
            return EEdited::Failed;
        }
        Dialog dialog(Doc(), item, position, this);
        bool isStored = false;
        dialog.SetOnConfirmed([&] {
            const CStep step(
                Database().GetStore(),
                StepName(position < 0 ? kAdditionStep : kEditStep, dialog.GetItem().GetName()));
            isStored = items.Write(position, dialog.GetItem());
            return Doc().MayClose(isStored);
        });
        if (dialog.exec() != QDialog::Accepted) {
            return EEdited::Cancelled;
        }
        if (!isStored) {
            return EEdited::Failed;
        }
        const Item& stored = dialog.GetItem();
        ShowStored(Database().Catalogue().FindItem(m_kind, stored.GetCategoryId(), stored.GetName(),
                                                   stored.GetType()));
        return EEdited::Stored;
    }

    CCatalogueViewSettings& Settings() { return m_settings; }
    void SaveSettings();

  private:
    void OpenPreferences();

    ECatalogueKind m_kind;
    CCatalogueViewSettings m_settings;
};

#include "catalogue/FoodsMainView.h"

#include <QAction>
#include <QPushButton>
#include <QTimer>

#include "catalogue/CsvExchange.h"
#include "catalogue/FoodEditDialog.h"
#include "catalogue/StarterFoods.h"

using namespace Qt::StringLiterals;

CFoodsMainView::CFoodsMainView(CVelmoraDoc& doc, QWidget* parent)
    : CCatalogueView(doc, kFoodsTexts, parent),
      m_settings(CFoodsViewSettings::Load(doc.Database())) {
    if (!StarterFoodsPath().isEmpty()) {
        QPushButton* button = AddEmptyPageButton(u"Import starter foods"_s);
        button->setObjectName(u"importStarterFoods"_s);
        connect(button, &QPushButton::clicked, this, &CFoodsMainView::ImportStarterFoods);
    }
    SetSplitterPerMille(m_settings.splitterPerMille);
    CFoodsMainView::DataChanged();
}

void CFoodsMainView::StoreLayout() {
    const int perMille = GetSplitterPerMille();
    if (perMille == m_settings.splitterPerMille) {
        return;
    }
    m_settings = CFoodsViewSettings::Load(Database());
    m_settings.splitterPerMille = perMille;
    (void)m_settings.Save(Database());  // A failure has shown its message.
}

void CFoodsMainView::DataChanged() {
    m_settings = CFoodsViewSettings::Load(Database());
    SetNamesInTree(m_settings.namesInTree);
    CCatalogueView::DataChanged();
}

CFoodsMainView::EEdited CFoodsMainView::EditItem(int position, qint32 categoryId) {
    CFoodItem food;
    food.SetCategoryId(categoryId);
    if (position >= 0 && !Database().Foods().Read(position, food)) {
        return EEdited::Failed;
    }
    CFoodEditDialog dialog(Doc(), food, position, this);
    if (dialog.exec() != QDialog::Accepted) {
        return EEdited::Cancelled;
    }
    if (!Database().Foods().Write(position, dialog.GetFood())) {
        return EEdited::Failed;
    }
    const CFoodItem& stored = dialog.GetFood();
    ShowStored(Database().FindItem(ECatalogueKind::Foods, stored.GetCategoryId(), stored.GetName(),
                                   stored.GetType()));
    return EEdited::Stored;
}

void CFoodsMainView::OpenPreferences() {
    StoreLayout();
    CFoodsPreferencesDialog dialog(Doc(), this);
    if (dialog.exec() == QDialog::Accepted) {
        DataChanged();
    }
}

std::vector<QAction*> CFoodsMainView::Tools() {
    auto* preferences = new QAction(u"Preferences..."_s, this);
    preferences->setObjectName(u"Preferences"_s);
    connect(preferences, &QAction::triggered, this, &CFoodsMainView::OpenPreferences);
    return {preferences};
}

void CFoodsMainView::showEvent(QShowEvent* event) {
    CCatalogueView::showEvent(event);
    if (!m_offered) {
        m_offered = true;
        QTimer::singleShot(0, this, &CFoodsMainView::OfferStarterFoods);
    }
}

void CFoodsMainView::OfferStarterFoods() {
    const bool isEmpty = Database().CountItems(ECatalogueKind::Foods) == 0 &&
                         Database().ListCategories(ECatalogueKind::Foods).empty();
    if (!isEmpty || m_settings.starterOffered || StarterFoodsPath().isEmpty()) {
        return;
    }
    if (AskYesNo(u"Your food catalogue is empty. Would you like to start with the foods that come "
                 "with Velmora?"_s)) {
        ImportStarterFoods();
        return;
    }
    m_settings.starterOffered = true;
    (void)m_settings.Save(Database());  // A failure has shown its message.
}

void CFoodsMainView::ImportStarterFoods() {
    RunImport([this] {
        (void)ImportCatalogueFile(Database(), ECatalogueKind::Foods, EExisting::Skip,
                                  StarterFoodsPath());
    });
}

#include "catalogue/view/FoodsMainView.h"

#include <QAction>
#include <QPushButton>
#include <QTimer>

#include "catalogue/exchange/StarterFoods.h"
#include "catalogue/items/FoodEditDialog.h"
#include "catalogue/tables/FoodTablesImport.h"
#include "catalogue/view/FoodsPreferencesDialog.h"
#include "catalogue/view/OptionsDialogs.h"

using namespace Qt::StringLiterals;

CFoodsMainView::CFoodsMainView(CVelmoraDoc& doc, QWidget* parent)
    : CTypedMainView(doc, ECatalogueKind::Foods, parent) {
    if (!StarterFoodsPath().isEmpty()) {
        QPushButton* button = AddEmptyPageButton(u"Import starter foods"_s);
        button->setObjectName(u"importStarterFoods"_s);
        connect(button, &QPushButton::clicked, this, [this] {
            ImportStarterFoods(Database());
            DataChanged();
        });
    }
    CTypedMainView::DataChanged();
}

CFoodsMainView::EEdited CFoodsMainView::EditItem(int position, qint32 categoryId) {
    CFoodItem food;
    food.SetCategoryId(categoryId);
    return EditWith<CFoodEditDialog>(Database().Foods(), position, food);
}

bool CFoodsMainView::AskPreferences() {
    return CFoodsPreferencesDialog(Doc(), this).exec() == QDialog::Accepted;
}

std::vector<QAction*> CFoodsMainView::FileTail() {
    auto* tables = new QAction(u"Import food tables..."_s, this);
    tables->setObjectName(u"Import food tables"_s);
    connect(tables, &QAction::triggered, this, &CFoodsMainView::ImportTables);
    return {tables};
}

void CFoodsMainView::ImportTables() {
    CFoodTablesRequest request;
    const std::optional<EDuplicatePolicy> policy =
        AskImportOptions(ECatalogueKind::Foods, request.policy, this);
    if (!policy) {
        return;
    }
    request.policy = *policy;
    request.folder = ChooseFolder(u"Import food tables"_s);
    if (!request.folder.isEmpty()) {
        RunThenReload([&] { (void)ImportFoodTables(Database(), request); });
    }
}

void CFoodsMainView::showEvent(QShowEvent* event) {
    CTypedMainView::showEvent(event);
    if (!m_offered) {
        m_offered = true;
        QTimer::singleShot(0, this, [this] {
            if (OfferStarterFoods(Database())) {
                DataChanged();
            }
        });
    }
}

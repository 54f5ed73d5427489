#include "catalogue/view/ExlibMainView.h"

#include "catalogue/items/ExlibEditDialog.h"
#include "catalogue/view/ExlibPreferencesDialog.h"

using namespace Qt::StringLiterals;

CExlibMainView::CExlibMainView(CVelmoraDoc& doc, QWidget* parent)
    : CTypedMainView(doc, ECatalogueKind::Exercises, parent) {
    Browser().AddColumn({u"Energy"_s, u"00.00 kcal/min"_s,
                         [this](const CCategoryListEntry& entry) { return EnergyCell(entry); }});
    CTypedMainView::DataChanged();
}

CCatalogueBrowser::CAddedCell CExlibMainView::EnergyCell(const CCategoryListEntry& entry) {
    CExerciseItem item;
    if (!Database().Exlib().ReadQuietly(entry.position, item)) {
        return {};
    }
    // kcal per minute and MET cannot be compared: all MET values sort after all rates.
    constexpr double kPastAllRates = 1e9;
    const double rate = item.GetEnergyRateKcalPerMinute();
    return {ExlibEnergyText(item, Doc().Preferences()),
            rate > 0 ? rate : kPastAllRates + item.GetMet()};
}

CExlibMainView::EEdited CExlibMainView::EditItem(int position, qint32 categoryId) {
    CExerciseItem item;
    item.SetCategoryId(categoryId);
    if (const CCatalogueRules::Entries selected = Browser().Selected(); !selected.empty()) {
        item.SetName(selected.front().name);
    }
    return EditWith<CExlibEditDialog>(Database().Exlib(), position, item);
}

bool CExlibMainView::AskPreferences() {
    return CExlibPreferencesDialog(Database(), this).exec() == QDialog::Accepted;
}

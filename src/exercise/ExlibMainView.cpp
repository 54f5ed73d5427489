#include "exercise/ExlibMainView.h"

#include <QAction>

#include "exercise/ExlibEditDialog.h"

using namespace Qt::StringLiterals;

CExlibMainView::CExlibMainView(CVelmoraDoc& doc, QWidget* parent)
    : CCatalogueView(doc, kExercisesTexts, parent),
      m_settings(CExlibViewSettings::Load(doc.Database())) {
    AddColumn(u"Energy"_s, u"00.00 kcal/min"_s,
              [this](const CCategoryListEntry& entry) { return EnergyText(entry); });
    SetSplitterPerMille(m_settings.splitterPerMille);
    CExlibMainView::DataChanged();
}

QString CExlibMainView::EnergyText(const CCategoryListEntry& entry) {
    CExerciseItem item;
    return Database().Exlib().ReadQuietly(entry.position, item)
               ? ExlibEnergyText(item, Doc().Preferences())
               : QString();
}

void CExlibMainView::StoreLayout() {
    const int perMille = GetSplitterPerMille();
    if (perMille == m_settings.splitterPerMille) {
        return;
    }
    m_settings = CExlibViewSettings::Load(Database());
    m_settings.splitterPerMille = perMille;
    (void)m_settings.Save(Database());  // A failure has shown its message.
}

void CExlibMainView::DataChanged() {
    m_settings = CExlibViewSettings::Load(Database());
    SetNamesInTree(m_settings.namesInTree);
    CCatalogueView::DataChanged();
}

CExlibMainView::EEdited CExlibMainView::EditItem(int position, qint32 categoryId) {
    CExerciseItem item;
    item.SetCategoryId(categoryId);
    if (position >= 0) {
        if (!Database().Exlib().Read(position, item)) {
            return EEdited::Failed;
        }
    } else if (const CCatalogueRules::Entries selected = Selected(); !selected.empty()) {
        item.SetName(selected.front().name);
    }
    CExlibEditDialog dialog(Doc(), item, position, this);
    if (dialog.exec() != QDialog::Accepted) {
        return EEdited::Cancelled;
    }
    const CExerciseItem& stored = dialog.GetItem();
    if (!Database().Exlib().Write(position, stored)) {
        return EEdited::Failed;
    }
    ShowStored(Database().FindItem(ECatalogueKind::Exercises, stored.GetCategoryId(),
                                   stored.GetName(), stored.GetType()));
    return EEdited::Stored;
}

void CExlibMainView::OpenPreferences() {
    StoreLayout();
    CExlibPreferencesDialog dialog(Database(), this);
    if (dialog.exec() == QDialog::Accepted) {
        DataChanged();
    }
}

std::vector<QAction*> CExlibMainView::Tools() {
    auto* preferences = new QAction(u"Preferences..."_s, this);
    preferences->setObjectName(u"Preferences"_s);
    connect(preferences, &QAction::triggered, this, &CExlibMainView::OpenPreferences);
    return {preferences};
}

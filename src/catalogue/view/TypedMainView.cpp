#include "catalogue/view/TypedMainView.h"

#include <QAction>

using namespace Qt::StringLiterals;

CTypedMainView::CTypedMainView(CVelmoraDoc& doc, ECatalogueKind kind, QWidget* parent)
    : CCatalogueView(doc, kind, parent),
      m_kind(kind),
      m_settings(CCatalogueViewSettings::Load(doc.Database(), m_kind)) {
    Browser().SetSplitterPerMille(m_settings.splitterPerMille);
}

void CTypedMainView::StoreLayout() {
    const int perMille = GetSplitterPerMille();
    if (perMille == m_settings.splitterPerMille) {
        return;
    }
    m_settings = CCatalogueViewSettings::Load(Database(), m_kind);
    m_settings.splitterPerMille = perMille;
    SaveSettings();
}

void CTypedMainView::SaveSettings() {
    (void)m_settings.Save(Database(), m_kind);  // A failure has shown its message.
}

void CTypedMainView::DataChanged() {
    m_settings = CCatalogueViewSettings::Load(Database(), m_kind);
    Browser().SetNamesInTree(m_settings.namesInTree);
    CCatalogueView::DataChanged();
}

void CTypedMainView::OpenPreferences() {
    StoreLayout();
    if (AskPreferences()) {
        DataChanged();
    }
}

std::vector<QAction*> CTypedMainView::Tools() {
    auto* preferences = new QAction(u"Preferences..."_s, this);
    preferences->setObjectName(u"Preferences"_s);
    connect(preferences, &QAction::triggered, this, &CTypedMainView::OpenPreferences);
    return {preferences};
}

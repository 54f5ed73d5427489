#include "catalogue/view/ExlibPreferencesDialog.h"

#include <QCheckBox>
#include <QLabel>
#include <QVBoxLayout>

#include "catalogue/items/CatalogueViewSettings.h"

using namespace Qt::StringLiterals;

namespace {
constexpr auto kExercises = ECatalogueKind::Exercises;
}  // namespace

CExlibPreferencesDialog::CExlibPreferencesDialog(CDatabase& database, QWidget* parent)
    : CDialog(u"Exercises preferences"_s, parent),
      m_database(database),
      m_namesInTree(new QCheckBox(u"Show exercise names in category tree"_s)) {
    m_namesInTree->setObjectName(u"namesInTree"_s);
    m_namesInTree->setChecked(CCatalogueViewSettings::Load(database, kExercises).namesInTree);
    m_namesInTree->setMinimumWidth(1);
    Content()->addWidget(new QLabel(u"Display:"_s));
    Content()->addWidget(m_namesInTree);
    Content()->addStretch();
    SetPreferredSize(300, 160);
}

bool CExlibPreferencesDialog::Confirm() {
    CCatalogueViewSettings settings = CCatalogueViewSettings::Load(m_database, kExercises);
    settings.namesInTree = m_namesInTree->isChecked();
    // A failure has shown its message. It keeps the dialog open only when the volume was lost.
    return settings.Save(m_database, kExercises) || !m_database.GetStore().IsVolumeLost();
}

#include "exercise/ExlibPreferencesDialog.h"

#include <QCheckBox>
#include <QLabel>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {
/// Places of the values in the view-settings record; the last four of the six are free.
enum ESetting { kNamesInTree, kSplitterPerMille };
}  // namespace

CExlibViewSettings CExlibViewSettings::Load(CDatabase& database) {
    CExlibViewSettings result;
    CViewSettings stored;
    if (database.ReadViewSettings(ECatalogueKind::Exercises, stored)) {
        result.namesInTree = stored.GetSetting(kNamesInTree) != 0;
        result.splitterPerMille = qBound<int>(0, stored.GetSetting(kSplitterPerMille), 1000);
    }
    return result;
}

bool CExlibViewSettings::Save(CDatabase& database) const {
    CViewSettings stored;
    stored.SetSetting(kNamesInTree, namesInTree ? 1 : 0);
    stored.SetSetting(kSplitterPerMille, static_cast<qint16>(splitterPerMille));
    return database.SaveViewSettings(ECatalogueKind::Exercises, stored);
}

CExlibPreferencesDialog::CExlibPreferencesDialog(CDatabase& database, QWidget* parent)
    : CDialog(u"Exercises preferences"_s, parent),
      m_database(database),
      m_namesInTree(new QCheckBox(u"Show exercise names in category tree"_s)) {
    m_namesInTree->setObjectName(u"namesInTree"_s);
    m_namesInTree->setChecked(CExlibViewSettings::Load(database).namesInTree);
    m_namesInTree->setMinimumWidth(1);
    Content()->addWidget(new QLabel(u"Display:"_s));
    Content()->addWidget(m_namesInTree);
    Content()->addStretch();
    SetPreferredSize(300, 160);
}

bool CExlibPreferencesDialog::Confirm() {
    CExlibViewSettings settings = CExlibViewSettings::Load(m_database);
    settings.namesInTree = m_namesInTree->isChecked();
    (void)settings.Save(m_database);  // A failure has shown its message.
    return true;
}

#include "profile/StartDialogs.h"

#include "profile/PreferencesDialog.h"
#include "profile/SelectProfileDialog.h"
#include "profile/TargetsDialog.h"
#include "profile/UserInformationDialog.h"

CStartWindows::CStartWindows(CVelmoraDoc& doc, QWidget* parent) : m_doc(doc), m_parent(parent) {}

QString CStartWindows::SelectUserProfile() {
    CSelectProfileDialog dialog(m_doc, m_parent);
    return dialog.exec() == QDialog::Accepted ? dialog.GetProfile() : QString();
}

bool CStartWindows::EditPreferences(CPreferences& preferences) {
    CPreferencesDialog dialog(preferences, m_doc.NutrientNames(), m_parent);
    if (dialog.exec() != QDialog::Accepted) {
        return false;
    }
    preferences = dialog.GetPreferences();
    return true;
}

bool CStartWindows::EditUserInformation(CUserInformation& user, const CPreferences& preferences) {
    CUserInformationDialog::NameCheck checkName;
    if (user.name.isEmpty()) {
        checkName = [this](const QString& name) { return m_doc.CheckNewProfileName(name); };
    }
    CUserInformationDialog dialog(user, preferences, checkName, m_parent);
    if (dialog.exec() != QDialog::Accepted) {
        return false;
    }
    user = dialog.GetUser();
    return true;
}

bool CStartWindows::EditTargets(CTargets& targets, const CUserInformation& user,
                                const CPreferences& preferences) {
    // The profile may not be active yet, so the names may have another profile's energy unit.
    QStringList names = m_doc.NutrientNames();
    names[kEnergyIndex] =
        CStoredNutrientNames::EnergyName(UnitName(preferences.energyUnit, EUnitForm::Abbreviated));
    CTargetsDialog dialog(targets, user, preferences, names, m_parent);
    if (dialog.exec() != QDialog::Accepted) {
        return false;
    }
    targets = dialog.GetTargets();
    return true;
}

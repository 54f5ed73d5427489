// "User information": name, sex, birth date, height, activity level.
#pragma once

#include <functional>

#include "app/Preferences.h"
#include "app/UserProfile.h"
#include "controls/Dialog.h"

class CUnitEdit;
class QComboBox;
class QDateEdit;
class QLabel;
class QLineEdit;
class QRadioButton;

class CUserInformationDialog : public CDialog {
    Q_OBJECT
  public:
    /// Returns the message why a new name cannot be used; nothing when it can.
    using NameCheck = std::function<std::optional<QString>(const QString& name)>;

    /// Without `checkName` the profile exists and its name cannot be changed.
    CUserInformationDialog(CUserInformation user, const CPreferences& preferences,
                           NameCheck checkName, QWidget* parent);
    [[nodiscard]] const CUserInformation& GetUser() const { return m_user; }

  protected:
    bool Confirm() override;

  private:
    void AddFields();
    QWidget* CreateSexRow();
    [[nodiscard]] CUserInformation ReadFields() const;
    [[nodiscard]] std::optional<QString> Check(const CUserInformation& user) const;
    void ShowAge();

    CUserInformation m_user;
    EHeightUnit m_heightUnit;
    NameCheck m_checkName;
    QLineEdit* m_name;
    QRadioButton* m_male;
    QDateEdit* m_birthDate;
    QLabel* m_age;
    CUnitEdit* m_height;
    QComboBox* m_activityLevel;
};

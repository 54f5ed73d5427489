#include "profile/UserInformationDialog.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>

#include "platform/Messages.h"
#include "profile/DateEdit.h"
#include "profile/UnitEdit.h"

using namespace Qt::StringLiterals;

CUserInformationDialog::CUserInformationDialog(CUserInformation user,
                                               const CPreferences& preferences, NameCheck checkName,
                                               QWidget* parent)
    : CDialog(u"User information"_s, parent),
      m_user(std::move(user)),
      m_heightUnit(preferences.heightUnit),
      m_checkName(std::move(checkName)) {
    AddFields();
    Content()->addStretch();
    ShowAge();
    connect(m_birthDate, &QDateEdit::dateChanged, this, &CUserInformationDialog::ShowAge);
    SetPreferredSize(380, 300);
}

bool CUserInformationDialog::Confirm() {
    const CUserInformation user = ReadFields();
    if (const std::optional<QString> refusal = Check(user)) {
        ShowMessage(*refusal);
        return false;
    }
    m_user = user;
    return true;
}

void CUserInformationDialog::AddFields() {
    m_name = new QLineEdit(m_user.name);
    m_name->setObjectName(u"name"_s);
    m_name->setMaxLength(kProfileNameLength);
    m_name->setEnabled(m_checkName != nullptr);
    m_birthDate = CreateDateEdit(m_user.birthDate, u"birthDate"_s);
    m_birthDate->setMaximumDate(QDate::currentDate());
    m_age = new QLabel;
    m_age->setObjectName(u"age"_s);
    m_height = new CUnitEdit(HeightLabels(m_heightUnit), u"Height"_s, u"height"_s);
    m_height->SetTexts(HeightTexts(m_user.heightCm, m_heightUnit));
    m_activityLevel = new QComboBox;
    m_activityLevel->setObjectName(u"activityLevel"_s);
    for (const CActivityLevel& level : kActivityLevels) {
        m_activityLevel->addItem(QString::fromLatin1(level.name));
    }
    m_activityLevel->setCurrentIndex(m_user.activityLevel);

    QFormLayout* form = AddForm();
    form->addRow(u"User &name:"_s, m_name);
    form->addRow(u"Sex:"_s, CreateSexRow());
    form->addRow(u"&Birth date:"_s, m_birthDate);
    form->addRow(u"Age:"_s, m_age);
    form->addRow(u"&Height:"_s, m_height);
    form->addRow(u"&Activity level:"_s, m_activityLevel);
}

QWidget* CUserInformationDialog::CreateSexRow() {
    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    m_male = new QRadioButton(u"&Male"_s);
    m_male->setObjectName(u"male"_s);
    auto* female = new QRadioButton(u"&Female"_s);
    female->setObjectName(u"female"_s);
    (m_user.isMale ? m_male : female)->setChecked(true);
    layout->addWidget(m_male);
    layout->addWidget(female);
    layout->addStretch();
    row->setFocusProxy(m_male);
    row->setAccessibleName(u"Sex"_s);
    return row;
}

CUserInformation CUserInformationDialog::ReadFields() const {
    CUserInformation user = m_user;
    user.name = m_name->text().trimmed();
    user.isMale = m_male->isChecked();
    user.birthDate = m_birthDate->date();
    user.activityLevel = m_activityLevel->currentIndex();
    // An unchanged height keeps its digits beyond those shown.
    const CUnitTexts height = m_height->GetTexts();
    if (height != HeightTexts(m_user.heightCm, m_heightUnit)) {
        user.heightCm = ReadHeightCm(height, m_heightUnit);
    }
    return user;
}

std::optional<QString> CUserInformationDialog::Check(const CUserInformation& user) const {
    std::optional<QString> refusal = CheckUserInformation(user);
    if (!refusal && m_checkName) {
        refusal = m_checkName(user.name);
    }
    return refusal;
}

void CUserInformationDialog::ShowAge() {
    const int years = AgeOn(QDate::currentDate(), m_birthDate->date());
    m_age->setText(FormatText("%d ys."_L1, {years}));
}

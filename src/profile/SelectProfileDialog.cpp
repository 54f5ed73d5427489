#include "profile/SelectProfileDialog.h"

#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "controls/ReportList.h"
#include "platform/Messages.h"
#include "profile/StartDialogs.h"

using namespace Qt::StringLiterals;

CSelectProfileDialog::CSelectProfileDialog(CVelmoraDoc& doc, QWidget* parent)
    : CDialog(u"Select user profile"_s, parent),
      m_doc(doc),
      m_list(new CReportList(u"User name"_s, this)) {
    m_list->setObjectName(u"profiles"_s);
    m_list->SetColumn(u"User name"_s);
    Content()->addWidget(m_list, 1);
    connect(m_list, &QTreeView::activated, this, &CSelectProfileDialog::accept);
    AddCommand(kCreateProfileCommand, u"&New..."_s, u"Create new user profile"_s,
               &CSelectProfileDialog::CreateProfile);
    AddCommand(kDeleteProfileCommand, u"&Delete..."_s, u"Delete user profile"_s,
               &CSelectProfileDialog::DeleteProfile);
    Fill();
    m_list->SelectRow(std::max(0, static_cast<int>(m_names.indexOf(m_doc.GetActiveProfile()))));
    SetPreferredSize(360, 320);
}

bool CSelectProfileDialog::Confirm() {
    const QStringList selected = SelectedNames();
    if (selected.size() != 1) {
        ShowMessage(u"Please select user profile."_s);
        return false;
    }
    m_profile = selected.front();
    return true;
}

void CSelectProfileDialog::AddCommand(int command, const QString& caption, const QString& prompt,
                                      void (CSelectProfileDialog::*run)()) {
    QPushButton* button = AddButton(caption);
    button->setObjectName(u"command%1"_s.arg(command));
    button->setToolTip(prompt);
    button->setAccessibleName(prompt);
    connect(button, &QPushButton::clicked, this, run);
}

void CSelectProfileDialog::Fill() {
    m_names = m_doc.Database().Profiles().ReadNames();
    CReportRows rows;
    rows.count = static_cast<int>(m_names.size());
    rows.text = [this](int row, int) { return m_names.value(row); };
    m_list->SetRows(std::move(rows));
}

QStringList CSelectProfileDialog::SelectedNames() const {
    QStringList names;
    for (const int row : m_list->SelectedRows()) {
        names.append(m_names.value(row));
    }
    return names;
}

void CSelectProfileDialog::CreateProfile() {
    CStartWindows windows(m_doc, this);
    if (m_doc.RunNewProfileSequence(windows)) {
        m_profile = m_doc.GetActiveProfile();
        done(Accepted);
        return;
    }
    Fill();
}

void CSelectProfileDialog::DeleteProfile() {
    const std::vector<int> rows = m_list->SelectedRows();
    (void)m_doc.DeleteUserProfiles(SelectedNames());  // has said what went wrong
    Fill();
    if (!rows.empty()) {
        m_list->SelectPlace(rows.front());
    }
}

#include "diary/CustomEntryDialog.h"

#include <QFormLayout>
#include <QLineEdit>
#include <QVBoxLayout>

#include "catalogue/pick/ValuesGrid.h"
#include "profile/DateEdit.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int kPreferredWidth = 380;
constexpr int kPreferredHeight = 380;
}  // namespace

CCustomEntryDialog::CCustomEntryDialog(CCustomEntryForm& form, QWidget* parent)
    : CDialog(u"Custom entry"_s, parent),
      m_form(form),
      m_name(new QLineEdit(this)),
      m_time(CreateTimeField(this)) {
    SetPreferredSize(kPreferredWidth, kPreferredHeight);
    m_name->setObjectName(u"name"_s);
    m_name->setMaxLength(kShortText);
    m_time->setTime(m_form.GetTime());
    QFormLayout* fields = AddForm();
    fields->addRow(u"Name:"_s, m_name);
    fields->addRow(u"Time:"_s, m_time);
    CGrid* values = CreateValuesGrid(m_form);
    for (int row = 0; row < m_form.RowCount(); ++row) {
        values->SetCellText(row, 1, m_form.RowText(row));
    }
    Content()->addWidget(values, 1);
    m_name->setFocus();
}

bool CCustomEntryDialog::Confirm() {
    m_form.SetNameText(m_name->text());
    m_form.SetTime(m_time->time());
    return m_form.Confirm();
}

#include "catalogue/FindDialog.h"

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "platform/Messages.h"

using namespace Qt::StringLiterals;

CFindDialog::CFindDialog(const QString& prompt, const CFindState& last, EFields fields,
                         QWidget* parent)
    : CDialog(u"Find"_s, parent), m_name(new QLineEdit(last.name)), m_type(new QLineEdit(this)) {
    auto* label = new QLabel(prompt);
    label->setWordWrap(true);
    Content()->addWidget(label);
    QFormLayout* form = AddForm();
    m_name->setObjectName(u"name"_s);
    m_type->setObjectName(u"type"_s);
    form->addRow(u"&Name:"_s, m_name);
    if (fields == EFields::NameAndType) {
        m_type->setText(last.type);
        form->addRow(u"&Type:"_s, m_type);
    } else {
        m_type->hide();
    }
    Content()->addStretch();
    m_name->selectAll();
    m_name->setFocus();
    SetPreferredSize(300, 180);
}

QString CFindDialog::GetName() const {
    return m_name->text();
}

QString CFindDialog::GetType() const {
    return m_type->text();
}

bool CFindDialog::Confirm() {
    if (!m_name->text().isEmpty() || !m_type->text().isEmpty()) {
        return true;
    }
    ShowMessage(u"Please enter at least one item for find."_s);
    m_name->setFocus();
    return false;
}

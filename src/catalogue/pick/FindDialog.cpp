#include "catalogue/pick/FindDialog.h"

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/Messages.h"

using namespace Qt::StringLiterals;

namespace {
/// Number of type fields, indexed by EFields.
constexpr int kTypeFields[] = {0, 1, 3};
constexpr int kWidth = 300;
constexpr int kHeight = 180;
constexpr int kRowHeight = 30;
}  // namespace

CFindDialog::CFindDialog(const QString& prompt, const CFindState& last, EFields fields,
                         QWidget* parent)
    : CDialog(u"Find"_s, parent), m_name(new QLineEdit(last.name)) {
    auto* label = new QLabel(prompt);
    label->setWordWrap(true);
    Content()->addWidget(label);
    QFormLayout* form = AddForm();
    m_name->setObjectName(u"name"_s);
    form->addRow(u"&Name:"_s, m_name);
    const int typeFields = kTypeFields[static_cast<int>(fields)];
    for (int i = 0; i < typeFields; ++i) {
        auto* type = new QLineEdit(last.types.value(i));
        type->setObjectName(i == 0 ? u"type"_s : u"type%1"_s.arg(i + 1));
        form->addRow(i == 0 ? u"&Type:"_s : u"and:"_s, type);
        if (i > 0) {
            type->setAccessibleName(u"Type %1"_s.arg(i + 1));
        }
        m_types.push_back(type);
    }
    Content()->addStretch();
    m_name->selectAll();
    m_name->setFocus();
    SetPreferredSize(kWidth, kHeight + std::max(0, typeFields - 1) * kRowHeight);
}

QString CFindDialog::GetName() const {
    return m_name->text();
}

QStringList CFindDialog::GetTypes() const {
    QStringList texts;
    for (const QLineEdit* type : m_types) {
        texts.append(type->text());
    }
    return texts;
}

bool CFindDialog::Confirm() {
    if (CFindState{GetName(), GetTypes()}.HasTexts()) {
        return true;
    }
    ShowMessage(u"Please enter at least one item for find."_s);
    m_name->setFocus();
    return false;
}

#include "profile/UnitEdit.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

#include "controls/NumberField.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int kFieldCharacters = 6;
}

CUnitEdit::CUnitEdit(const CUnitTexts& labels, const QString& accessibleName,
                     const QString& objectName) {
    setObjectName(objectName);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    m_major = AddField(labels.major, accessibleName, objectName + u"Major"_s);
    if (!labels.minor.isEmpty()) {
        m_minor = AddField(labels.minor, accessibleName, objectName + u"Minor"_s);
    }
    row->addStretch();
    setFocusProxy(m_major);
}

void CUnitEdit::SetTexts(const CUnitTexts& texts) {
    m_major->setText(texts.major);
    if (m_minor != nullptr) {
        m_minor->setText(texts.minor);
    }
}

CUnitTexts CUnitEdit::GetTexts() const {
    return {m_major->text(), m_minor != nullptr ? m_minor->text() : QString()};
}

QLineEdit* CUnitEdit::AddField(const QString& unit, const QString& accessibleName,
                               const QString& objectName) {
    auto* field = CreateNumberField(objectName, this);
    field->setAccessibleName(accessibleName + u", "_s + unit);
    field->setFixedWidth(field->fontMetrics().averageCharWidth() * (kFieldCharacters + 3));
    connect(field, &QLineEdit::editingFinished, this, &CUnitEdit::EditingFinished);
    layout()->addWidget(field);
    layout()->addWidget(new QLabel(unit, this));
    return field;
}

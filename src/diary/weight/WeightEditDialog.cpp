#include "diary/weight/WeightEditDialog.h"

#include <QFormLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimeEdit>
#include <algorithm>

#include "controls/InputPanel.h"
#include "profile/DateEdit.h"
#include "profile/UnitEdit.h"

using namespace Qt::StringLiterals;

namespace {

/// Keys that a field handles and does not pass on. Tab is not among them.
bool IsKeyOfField(const QKeyEvent& event) {
    constexpr int kKeys[] = {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape,
                             Qt::Key_Delete, Qt::Key_Up,    Qt::Key_Down};
    return (event.modifiers() & Qt::ControlModifier) != 0 ||
           std::ranges::find(kKeys, event.key()) != std::end(kKeys);
}

}  // namespace

CWeightEditDialog::CWeightEditDialog(CWeightForm& form, QWidget* parent)
    : CDialog(u"Weight edit"_s, parent), m_form(form) {
    AddFields();
    AddBodyFatButton();
    ShowFields();
    for (QLineEdit* field : findChildren<QLineEdit*>()) {
        field->installEventFilter(this);
    }
    // Return and Escape stay in the fields, so the buttons get mnemonics.
    for (const auto& [name, tip] : {std::pair{"ok", "OK"}, std::pair{"cancel", "Cancel"}}) {
        auto* button = findChild<QPushButton*>(QLatin1StringView(name));
        button->setToolTip(QLatin1StringView(tip));
        button->setText(u'&' + button->toolTip());
    }
    m_weight->setFocus();
}

bool CWeightEditDialog::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::FocusIn:
            RaiseInputPanel();
            break;
        case QEvent::FocusOut:
            LowerInputPanel();
            break;
        case QEvent::KeyPress:
            if (IsKeyOfField(*static_cast<QKeyEvent*>(event))) {
                watched->event(event);
                event->accept();
                return true;
            }
            break;
        default:
            break;
    }
    return CDialog::eventFilter(watched, event);
}

bool CWeightEditDialog::Confirm() {
    return m_form.Confirm(ReadFields());
}

void CWeightEditDialog::AddFields() {
    const CWeightFields fields = m_form.GetFields();
    m_date = CreateDateEdit(fields.date, u"date"_s, this);
    m_time = CreateTimeField(this);
    QFormLayout* moment = AddForm();
    moment->addRow(u"Date:"_s, m_date);
    moment->addRow(u"Time:"_s, m_time);

    Content()->addWidget(new QLabel(u"Weight information:"_s, this));
    const CPreferences& preferences = m_form.GetPreferences();
    m_weight = new CUnitEdit(WeightLabels(preferences.weightUnit), u"Weight"_s, u"weight"_s);
    QFormLayout* form = AddForm();
    form->addRow(u"Weight:"_s, m_weight);
    const QString unit = TapeUnitName(preferences);
    for (int slot = 0; slot < kTapeCount; ++slot) {
        const QString name = MeasurementName(slot).trimmed();
        m_tape[slot] = new CUnitEdit({unit, {}}, name, name.toLower());
        form->addRow(name + u':', m_tape[slot]);
    }
    m_bodyFat = new CUnitEdit({u"%"_s, {}}, u"Body fat"_s, u"bodyFat"_s);
    form->addRow(u"B.Fat:"_s, m_bodyFat);
    Content()->addStretch(1);
}

void CWeightEditDialog::AddBodyFatButton() {
    const QString tip = u"Calculate body fat (waist only method)"_s;
    QPushButton* button = AddButton(u"&B.Fat"_s);
    button->setObjectName(u"calculateBodyFat"_s);
    button->setAccessibleName(tip);
    button->setToolTip(tip);
    connect(button, &QPushButton::clicked, this, [this] {
        if (const auto text = m_form.CalculateBodyFat(ReadFields())) {
            m_bodyFat->SetTexts({*text, {}});
        }
    });
}

void CWeightEditDialog::ShowFields() {
    const CWeightFields fields = m_form.GetFields();
    m_time->setTime(fields.time);
    m_weight->SetTexts(fields.weight);
    for (int slot = 0; slot < kTapeCount; ++slot) {
        m_tape[slot]->SetTexts({fields.tape[slot], {}});
    }
    m_bodyFat->SetTexts({fields.bodyFat, {}});
}

CWeightFields CWeightEditDialog::ReadFields() const {
    CWeightFields fields = {
        m_date->date(), m_time->time(), m_weight->GetTexts(), {}, m_bodyFat->GetTexts().major};
    for (int slot = 0; slot < kTapeCount; ++slot) {
        fields.tape[slot] = m_tape[slot]->GetTexts().major;
    }
    return fields;
}

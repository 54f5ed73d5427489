#include "exercise/ExerciseEditDialog.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>

#include "controls/NumberField.h"
#include "controls/PickField.h"
#include "controls/SearchField.h"
#include "exercise/ExerciseRules.h"
#include "platform/NumberText.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int kPreferredWidth = 380;
constexpr int kPreferredHeight = 340;

constexpr int kHoursPerDay = 24;
constexpr int kMinutesStep = 5;
constexpr int kDurationLength = 5;
constexpr int kDurationCharacters = 3;

void ShowText(QComboBox* field, const QString& text) {
    const QSignalBlocker quiet(field);
    field->setCurrentIndex(field->findText(text));
    field->setEditText(text);
}

}  // namespace

CExerciseEditDialog::CExerciseEditDialog(CExerciseForm& form, QWidget* parent)
    : CPickDialog(u"Edit exercise"_s, form,
                  {"Please enter exercise name and/or type:",
                   CFindDialog::EFields::NameAndThreeTypes, "Find exercise", "Find next exercise"},
                  parent),
      m_form(form) {
    SetPreferredSize(kPreferredWidth, kPreferredHeight);
    AddSearchField();
    Content()->addWidget(new QLabel(u"Edit exercise:"_s, this));
    AddFields();
    Content()->addStretch(1);
    AddPickList();
    CExerciseEditDialog::ShowForm();
    if (m_form.NameText().isEmpty()) {
        SearchField()->setFocus();
    } else {
        FieldOf(EPicker::Category)->setFocus();
    }
}

bool CExerciseEditDialog::Confirm() {
    ReadFields();
    return m_form.Confirm();
}

void CExerciseEditDialog::AddFields() {
    QFormLayout* form = AddForm();
    AddPickFields(form);
    QLayout* duration = CreateDurationRow();
    AddRow(form, u"Ex. time:"_s, duration, m_hours);
    AddTimeRow(form, u"Time:"_s);
    QLayout* energy = CreateEnergyRow();
    AddRow(form, u"Total energy burned:"_s, energy, m_energy);
}

QLayout* CExerciseEditDialog::CreateDurationRow() {
    m_hours = new QComboBox(this);
    m_minutes = new QComboBox(this);
    SetUpListField(m_hours, u"Hours"_s, kDurationCharacters, kDurationLength);
    SetUpListField(m_minutes, u"Minutes"_s, kDurationCharacters, kDurationLength);
    for (int hour = 0; hour < kHoursPerDay; ++hour) {
        m_hours->addItem(QString::number(hour));
    }
    for (int minute = 0; minute < kMinutesPerHour; minute += kMinutesStep) {
        m_minutes->addItem(TwoDigits(minute));
    }
    for (QComboBox* field : {m_hours, m_minutes}) {
        connect(field, &QComboBox::editTextChanged, this, [this] {
            m_form.SetDurationTexts(m_hours->currentText(), m_minutes->currentText());
            m_energy->setText(m_form.EnergyText());
        });
    }
    QHBoxLayout* row = CreateRow();
    for (const auto& [field, unit] :
         {std::pair(m_hours, u"hrs"_s), std::pair(m_minutes, u"mins"_s)}) {
        auto* label = new QLabel(unit, this);
        label->setBuddy(field);
        row->addWidget(field);
        row->addWidget(label);
    }
    row->addStretch(1);
    return row;
}

QLayout* CExerciseEditDialog::CreateEnergyRow() {
    m_energy = CreateNumberField(u"energy"_s, this);
    m_energy->setAccessibleName(u"Total energy burned"_s);
    connect(m_energy, &QLineEdit::textEdited, this,
            [this](const QString& text) { m_form.SetEnergyText(text); });
    QHBoxLayout* row = CreateRow();
    row->addWidget(m_energy, 1);
    row->addWidget(new QLabel(m_form.EnergyUnitText(), this));
    return row;
}

void CExerciseEditDialog::ShowForm() {
    CPickDialog::ShowForm();
    ShowText(m_hours, m_form.HoursText());
    ShowText(m_minutes, m_form.MinutesText());
    m_energy->setText(m_form.EnergyText());
}

/// Moves the focus to the field to fill in next.
void CExerciseEditDialog::ContinueWith(EPicker next) {
    if (next == EPicker::None) {
        m_hours->setFocus();
    } else {
        FieldOf(next)->setFocus();
    }
}

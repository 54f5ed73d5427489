#include "exercise/ExerciseEditDialog.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTimeEdit>

#include "catalogue/FindDialog.h"
#include "controls/PickList.h"
#include "diary/DietMoveDialog.h"
#include "diary/PickField.h"
#include "exercise/ExerciseRules.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int kPreferredWidth = 380;
constexpr int kPreferredHeight = 340;
constexpr int kNarrowSpacing = 4;
constexpr int kButtonMargin = 10;

/// What an entry keeps of a name or type.
constexpr int kNameLength = 64;
constexpr int kHoursPerDay = 24;
constexpr int kMinutesPerHour = 60;
constexpr int kMinutesStep = 5;
constexpr int kDurationLength = 5;
constexpr int kDurationCharacters = 3;

QHBoxLayout* RowLayout(QWidget* row) {
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(kNarrowSpacing);
    return layout;
}

/// An editable drop-down of numbers.
QComboBox* CreateNumberField(const QString& name, const QStringList& numbers, QWidget* parent) {
    auto* field = new QComboBox(parent);
    field->setObjectName(name.toLower());
    field->setAccessibleName(name);
    field->setEditable(true);
    field->setInsertPolicy(QComboBox::NoInsert);
    field->setCompleter(nullptr);
    field->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    field->setMinimumContentsLength(kDurationCharacters);
    field->lineEdit()->setMaxLength(kDurationLength);
    field->addItems(numbers);
    field->setFocusPolicy(Qt::StrongFocus);  // the wheel alone does not bring it
    return field;
}

void ShowText(QComboBox* field, const QString& text) {
    const QSignalBlocker quiet(field);
    field->setCurrentIndex(field->findText(text));
    field->setEditText(text);
}

}  // namespace

CExerciseEditDialog::CExerciseEditDialog(CExerciseForm& form, QWidget* parent)
    : CDialog(u"Edit exercise"_s, parent), m_form(form) {
    SetPreferredSize(kPreferredWidth, kPreferredHeight);
    Content()->addWidget(new QLabel(u"Edit exercise:"_s, this));
    AddFields();
    Content()->addStretch(1);
    m_pickList = new CPickList(OverlayParent());
    connect(m_pickList, &CPickList::Picked, this, &CExerciseEditDialog::TakePicked);
    ShowForm();
    m_category->setFocus();
}

bool CExerciseEditDialog::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Wheel && !static_cast<QWidget*>(watched)->hasFocus()) {
        event->ignore();
        return true;
    }
    return CDialog::eventFilter(watched, event);
}

bool CExerciseEditDialog::CloseOverlay() {
    const bool wasOpen = m_pickList->IsOpen();
    m_pickList->Close();
    return wasOpen;
}

bool CExerciseEditDialog::Confirm() {
    ReadFields();
    return m_form.Confirm();
}

void CExerciseEditDialog::AddFields() {
    QFormLayout* form = AddForm();
    const auto addPicker = [&](EPicker picker, const QString& label, const QString& name,
                               bool isEditable) {
        auto* field = new CPickField(isEditable, name, this);
        field->setObjectName(name.toLower());
        if (isEditable) {
            field->SetMaxLength(kNameLength);
        }
        connect(field, &CPickField::PickRequested, this, [this, picker] { OpenPicker(picker); });
        form->addRow(label, field);
        return field;
    };
    m_category = addPicker(EPicker::Category, u"Category:"_s, u"Category"_s, false);
    m_name = addPicker(EPicker::Name, u"Name:"_s, u"Name"_s, true);
    m_type = addPicker(EPicker::Type, u"Type:"_s, u"Type"_s, true);

    const auto addRow = [&](const QString& text, QWidget* row, QWidget* buddy) {
        auto* label = new QLabel(text, this);
        label->setBuddy(buddy);
        form->addRow(label, row);
    };
    QWidget* durationRow = AddDurationRow();
    addRow(u"Ex. time:"_s, durationRow, m_hours);
    QWidget* timeRow = AddTimeRow();
    addRow(u"Time:"_s, timeRow, m_time);
    QWidget* energyRow = AddEnergyRow();
    addRow(u"Total energy burned:"_s, energyRow, m_energy);
}

QWidget* CExerciseEditDialog::AddDurationRow() {
    auto* row = new QWidget(this);
    QStringList hours;
    for (int hour = 0; hour < kHoursPerDay; ++hour) {
        hours.append(QString::number(hour));
    }
    QStringList minutes;
    for (int minute = 0; minute < kMinutesPerHour; minute += kMinutesStep) {
        minutes.append(TwoDigits(minute));
    }
    m_hours = CreateNumberField(u"Hours"_s, hours, row);
    m_minutes = CreateNumberField(u"Minutes"_s, minutes, row);
    for (QComboBox* field : {m_hours, m_minutes}) {
        field->installEventFilter(this);
        connect(field, &QComboBox::editTextChanged, this, [this] {
            m_form.SetDurationTexts(m_hours->currentText(), m_minutes->currentText());
            m_energy->setText(m_form.EnergyText());
        });
    }
    QHBoxLayout* layout = RowLayout(row);
    layout->addWidget(m_hours);
    layout->addWidget(new QLabel(u"hrs"_s, row));
    layout->addWidget(m_minutes);
    layout->addWidget(new QLabel(u"mins"_s, row));
    layout->addStretch(1);
    return row;
}

QWidget* CExerciseEditDialog::AddTimeRow() {
    auto* row = new QWidget(this);
    m_time = CreateTimeField(row);
    QHBoxLayout* layout = RowLayout(row);
    layout->addWidget(m_time);
    layout->addStretch(1);

    const auto addButton = [&](const QString& text, const QString& tip, auto slot) {
        auto* button = new QPushButton(text, row);
        button->setObjectName(tip);
        button->setAccessibleName(tip);
        button->setToolTip(tip);
        button->setAutoDefault(false);
        // Narrow screens have no room for the platform's usual button width.
        button->setFixedWidth(button->fontMetrics().horizontalAdvance(text) + kButtonMargin);
        connect(button, &QPushButton::clicked, this, slot);
        layout->addWidget(button);
    };
    addButton(u"Find..."_s, u"Find exercise"_s, &CExerciseEditDialog::Find);
    addButton(u"Find next"_s, u"Find next exercise"_s, &CExerciseEditDialog::FindNext);
    return row;
}

QWidget* CExerciseEditDialog::AddEnergyRow() {
    auto* row = new QWidget(this);
    m_energy = new QLineEdit(row);
    m_energy->setObjectName(u"energy"_s);
    m_energy->setAccessibleName(u"Total energy burned"_s);
    connect(m_energy, &QLineEdit::textEdited, this,
            [this](const QString& text) { m_form.SetEnergyText(text); });
    QHBoxLayout* layout = RowLayout(row);
    layout->addWidget(m_energy, 1);
    layout->addWidget(new QLabel(m_form.EnergyUnitText(), row));
    return row;
}

void CExerciseEditDialog::ReadFields() {
    m_form.SetNameText(m_name->GetText());
    m_form.SetTypeText(m_type->GetText());
    m_form.SetTime(m_time->time());
}

void CExerciseEditDialog::ShowForm() {
    m_category->SetText(m_form.CategoryText());
    m_name->SetText(m_form.NameText());
    m_type->SetText(m_form.TypeText());
    ShowText(m_hours, m_form.HoursText());
    ShowText(m_minutes, m_form.MinutesText());
    m_time->setTime(m_form.GetTime());
    m_energy->setText(m_form.EnergyText());
}

void CExerciseEditDialog::OpenPicker(EPicker picker) {
    ReadFields();
    const QStringList choices = m_form.Choices(picker);
    if (choices.isEmpty()) {
        return;
    }
    m_picker = picker;
    CPickField* field = FieldOf(picker);
    m_pickList->Open(field, CAddFoodForm::HeaderOf(picker), choices, field->GetText());
}

/// The focus goes to the field that is filled next.
void CExerciseEditDialog::TakePicked(const QString& row) {
    m_form.Pick(m_picker, row);
    ShowForm();
    QComboBox* next = m_hours;
    if (m_picker == EPicker::Category) {
        next = m_name;
    } else if (m_picker == EPicker::Name) {
        next = m_type;
    }
    next->setFocus();
}

void CExerciseEditDialog::Find() {
    CFindDialog dialog(u"Please enter exercise name and/or type:"_s, m_form.FindState(),
                       CFindDialog::EFields::NameAndThreeTypes, this);
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    ReadFields();
    if (m_form.Find(dialog.GetName(), dialog.GetTypes())) {
        ShowForm();
    }
}

void CExerciseEditDialog::FindNext() {
    if (!m_form.HasFindName()) {
        Find();
        return;
    }
    ReadFields();
    if (m_form.FindNext()) {
        ShowForm();
    }
}

CPickField* CExerciseEditDialog::FieldOf(EPicker picker) const {
    switch (picker) {
        case EPicker::Name:
            return m_name;
        case EPicker::Type:
            return m_type;
        default:
            return m_category;
    }
}

#include "profile/TargetsDialog.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "controls/Grid.h"
#include "controls/NumberField.h"
#include "profile/DateEdit.h"
#include "profile/UnitEdit.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int kTargetColumn = 1;
constexpr int kCalculatedColumn = 2;

void ShowDate(QDateEdit* edit, QDate date) {
    const QSignalBlocker blocker(edit);
    edit->setDate(date);
}
}  // namespace

CTargetsDialog::CTargetsDialog(const CTargets& targets, const CUserInformation& user,
                               const CPreferences& preferences, const QStringList& nutrientNames,
                               QWidget* parent)
    : CDialog(u"Targets"_s, parent), m_form(targets, user, preferences) {
    AddPlan(preferences);
    AddNutrients(nutrientNames);
    ShowForm();
    ConnectFields();
    SetPreferredSize(420, 600);
}

bool CTargetsDialog::Confirm() {
    ReadFields();
    return m_form.Confirm();
}

void CTargetsDialog::AddPlan(const CPreferences& preferences) {
    const CUnitTexts weightLabels = WeightLabels(preferences.weightUnit);
    m_startDate = CreateDateEdit(m_form.GetFields().startDate, u"startDate"_s);
    m_startWeight = new CUnitEdit(weightLabels, u"Start weight"_s, u"startWeight"_s);
    m_goalDate = CreateDateEdit(m_form.GetFields().goalDate, u"goalDate"_s);
    m_goalWeight = new CUnitEdit(weightLabels, u"Goal weight"_s, u"goalWeight"_s);
    m_rate = CreateNumberField(u"rate"_s);
    m_weeks = new QLabel;
    m_weeks->setObjectName(u"weeks"_s);
    m_energy = CreateNumberField(u"energy"_s);
    m_dietType = new QComboBox;
    m_dietType->setObjectName(u"dietType"_s);
    for (const CDietType& type : kDietTypes) {
        m_dietType->addItem(QString::fromLatin1(type.name));
    }

    QFormLayout* form = AddForm();
    form->addRow(u"Start date:"_s, m_startDate);
    form->addRow(u"Start weight:"_s, m_startWeight);
    form->addRow(u"Goal date:"_s, m_goalDate);
    form->addRow(u"Goal weight:"_s, m_goalWeight);
    form->addRow(m_form.RateLabel(), m_rate);
    form->addRow(u"Weeks to goal:"_s, m_weeks);
    form->addRow(
        u"Daily energy (%1):"_s.arg(UnitName(preferences.energyUnit, EUnitForm::Abbreviated)),
        m_energy);
    form->addRow(u"Diet type:"_s, m_dietType);
}

void CTargetsDialog::AddNutrients(const QStringList& names) {
    const QString prompt = u"Recalc. nutruents using daily energy"_s;
    m_recalculate = AddButton(u"Recalc."_s);
    m_recalculate->setObjectName(u"command%1"_s.arg(kRecalculateCommand));
    m_recalculate->setToolTip(prompt);
    m_recalculate->setAccessibleName(prompt);

    const QString caption = m_recalculate->text();
    m_nutrients = new CGrid(EGridKind::Values, {u"Nutrient (unit)"_s, u"Target"_s, caption},
                            u"Nutrient targets"_s, this);
    m_nutrients->model()->setHeaderData(kCalculatedColumn, Qt::Horizontal,
                                        u"Targets that OK or %1 would set"_s.arg(caption),
                                        Qt::ToolTipRole);
    m_nutrients->setObjectName(u"nutrients"_s);
    m_nutrients->SetRowCount(kNutrientCount);
    for (int row = 0; row < kNutrientCount; ++row) {
        m_nutrients->SetCellText(row, 0, names.value(row));
    }
    Content()->addWidget(m_nutrients, 1);
}

void CTargetsDialog::ConnectFields() {
    for (QDateEdit* edit : {m_startDate, m_goalDate}) {
        connect(edit, &QDateEdit::dateChanged, this, &CTargetsDialog::ReadFields);
    }
    for (CUnitEdit* edit : {m_startWeight, m_goalWeight}) {
        connect(edit, &CUnitEdit::EditingFinished, this, &CTargetsDialog::ReadFields);
    }
    for (QLineEdit* edit : {m_rate, m_energy}) {
        connect(edit, &QLineEdit::editingFinished, this, &CTargetsDialog::ReadFields);
    }
    connect(m_dietType, &QComboBox::activated, this, [this](int dietType) {
        m_form.SetDietType(dietType);
        ShowForm();
    });
    connect(m_recalculate, &QPushButton::clicked, this, [this] {
        ReadFields();
        m_form.Recalculate();
        ShowForm();
    });
    connect(m_nutrients, &CGrid::LabelEditEnded, this,
            [this](int row, int column, const std::optional<QString>& text) {
                if (text && column == kTargetColumn) {
                    m_form.TypeTarget(row, *text);
                    ShowForm();
                }
            });
}

void CTargetsDialog::ReadFields() {
    m_form.SetFields({m_startDate->date(), m_startWeight->GetTexts(), m_goalDate->date(),
                      m_goalWeight->GetTexts(), m_rate->text(), m_energy->text()});
    ShowForm();
}

void CTargetsDialog::ShowForm() {
    const CTargetsFields fields = m_form.GetFields();
    ShowDate(m_startDate, fields.startDate);
    m_startWeight->SetTexts(fields.startWeight);
    ShowDate(m_goalDate, fields.goalDate);
    m_goalWeight->SetTexts(fields.goalWeight);
    m_rate->setText(fields.rate);
    m_energy->setText(fields.energy);
    m_weeks->setText(m_form.WeeksText());
    m_dietType->setCurrentIndex(m_form.GetTargets().dietType);
    m_recalculate->setEnabled(m_form.CanRecalculate());
    for (int row = 0; row < kNutrientCount; ++row) {
        m_nutrients->SetCellText(row, kTargetColumn, m_form.TargetText(row));
        m_nutrients->SetCellText(row, kCalculatedColumn, m_form.CalculatedText(row));
    }
    m_nutrients->SetColumnShown(kCalculatedColumn, m_form.CanRecalculate());
}

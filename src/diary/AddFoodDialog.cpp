#include "diary/AddFoodDialog.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTabBar>
#include <QTimeEdit>

#include "catalogue/CatalogueTexts.h"
#include "catalogue/FindDialog.h"
#include "controls/Grid.h"
#include "controls/PickList.h"
#include "diary/DietMoveDialog.h"
#include "diary/PickField.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int kPreferredWidth = 460;
constexpr int kPreferredHeight = 560;
constexpr int kLeastValueRows = 4;
constexpr int kServingLength = 64;
constexpr int kAmountCharacters = 7;
constexpr int kValueCharacters = 11;
constexpr int kNarrowSpacing = 4;
constexpr int kButtonMargin = 10;

/// Tab texts by item kind.
constexpr const char* kKindNames[] = {"Food", "Menu", "Recipe"};

QHBoxLayout* RowLayout(QWidget* row) {
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    return layout;
}

}  // namespace

CAddFoodDialog::CAddFoodDialog(CAddFoodForm& form, QWidget* parent)
    : CDialog(u"Add Food"_s, parent), m_form(form) {
    SetPreferredSize(kPreferredWidth, kPreferredHeight);
    AddKindTabs();
    AddFields();
    AddValues();
    m_pickList = new CPickList(OverlayParent());
    connect(m_pickList, &CPickList::Picked, this, &CAddFoodDialog::TakePicked);
    ShowForm();
    m_category->setFocus();
}

// A field that loses the focus ends its editing, which has to happen while there is a dialog left.
CAddFoodDialog::~CAddFoodDialog() {
    hide();
}

bool CAddFoodDialog::CloseOverlay() {
    const bool wasOpen = m_pickList->IsOpen();
    m_pickList->Close();
    return wasOpen;
}

bool CAddFoodDialog::Confirm() {
    ReadFields();
    const bool confirmed = m_form.Confirm();
    ShowForm();
    return confirmed;
}

void CAddFoodDialog::AddKindTabs() {
    m_kinds = new QTabBar(this);
    m_kinds->setObjectName(u"kinds"_s);
    m_kinds->setAccessibleName(u"Kind"_s);
    m_kinds->setDrawBase(false);
    for (const EItemKind kind : m_form.Kinds()) {
        const int tab = m_kinds->addTab(QLatin1StringView(kKindNames[static_cast<int>(kind)]));
        if (kind == m_form.GetKind()) {
            m_kinds->setCurrentIndex(tab);
        }
    }
    connect(m_kinds, &QTabBar::currentChanged, this, [this](int tab) {
        m_form.SetTime(m_time->time());
        m_form.SetKind(m_form.Kinds()[tab]);
        ShowForm();
    });
    Content()->addWidget(m_kinds);
}

void CAddFoodDialog::AddFields() {
    QFormLayout* form = AddForm();
    const auto addPicker = [&](EPicker picker, const QString& label, const QString& name,
                               bool isEditable) {
        auto* field = new CPickField(isEditable, name, this);
        field->setObjectName(name.toLower());
        connect(field, &CPickField::PickRequested, this, [this, picker] { OpenPicker(picker); });
        form->addRow(label, field);
        return field;
    };
    m_category = addPicker(EPicker::Category, u"Category:"_s, u"Category"_s, false);
    m_name = addPicker(EPicker::Name, u"Name:"_s, u"Name"_s, true);
    m_type = addPicker(EPicker::Type, u"Type:"_s, u"Type"_s, true);

    QWidget* servingRow = AddServingRow();
    auto* servingLabel = new QLabel(u"Serving:"_s, this);
    servingLabel->setBuddy(m_serving);
    form->addRow(servingLabel, servingRow);

    QWidget* timeRow = AddTimeRow();
    auto* timeLabel = new QLabel(m_form.HasTime() ? u"Time:"_s : QString(), this);
    timeLabel->setBuddy(m_time);
    m_time->setVisible(m_form.HasTime());
    form->addRow(timeLabel, timeRow);
}

QWidget* CAddFoodDialog::AddServingRow() {
    auto* row = new QWidget(this);
    m_serving = new QComboBox(row);
    m_serving->setObjectName(u"serving"_s);
    m_serving->setAccessibleName(u"Serving"_s);
    m_serving->setEditable(true);
    m_serving->setInsertPolicy(QComboBox::NoInsert);
    m_serving->setCompleter(nullptr);
    m_serving->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_serving->setMinimumContentsLength(4);
    m_serving->lineEdit()->setMaxLength(kServingLength);
    connect(m_serving, &QComboBox::activated, this, [this](int index) {
        ReadFields();
        m_form.SelectServing(index);
        ShowForm();
    });

    m_amount = new QLineEdit(row);
    m_amount->setObjectName(u"amount"_s);
    m_amount->setAccessibleName(u"Amount"_s);
    m_amount->setMaximumWidth(m_amount->fontMetrics().averageCharWidth() * kAmountCharacters +
                              m_amount->fontMetrics().height());
    for (QLineEdit* edit : {m_serving->lineEdit(), m_amount}) {
        connect(edit, &QLineEdit::editingFinished, this, [this] {
            ReadFields();
            ShowForm();
        });
    }

    QHBoxLayout* layout = RowLayout(row);
    layout->setSpacing(kNarrowSpacing);
    layout->addWidget(m_serving, 1);
    layout->addWidget(new QLabel(u"X"_s, row));
    layout->addWidget(m_amount);
    return row;
}

QWidget* CAddFoodDialog::AddTimeRow() {
    auto* row = new QWidget(this);
    m_time = CreateTimeField(row);
    QHBoxLayout* layout = RowLayout(row);
    layout->setSpacing(kNarrowSpacing);
    layout->addWidget(m_time);
    layout->addStretch(1);

    const auto addButton = [&](const QString& text, const QString& tip, auto slot) {
        auto* button = new QPushButton(text, row);
        button->setObjectName(tip);
        button->setToolTip(tip);
        button->setAutoDefault(false);
        // Narrow screens have no room for the platform's usual button width.
        button->setFixedWidth(button->fontMetrics().horizontalAdvance(text) + kButtonMargin);
        connect(button, &QPushButton::clicked, this, slot);
        layout->addWidget(button);
        m_findButtons.push_back(button);
    };
    addButton(u"Find..."_s, u"Find food"_s, &CAddFoodDialog::Find);
    addButton(u"Find next"_s, u"Find next food"_s, &CAddFoodDialog::FindNext);
    return row;
}

void CAddFoodDialog::AddValues() {
    m_values = new CGrid(EGridKind::Values, {u"Nutrient (unit)"_s, u"Value"_s}, u"Nutrients"_s);
    m_values->setObjectName(u"values"_s);
    m_values->setMinimumHeight(m_values->fontMetrics().height() * 2 * kLeastValueRows);
    m_values->setColumnWidth(1, m_values->fontMetrics().averageCharWidth() * kValueCharacters);
    m_values->SetRowCount(m_form.RowCount());
    for (int row = 0; row < m_form.RowCount(); ++row) {
        m_values->SetCellText(row, 0, m_form.RowTitle(row));
    }
    connect(m_values, &CGrid::LabelEditEnded, this,
            [this](int row, int column, const std::optional<QString>& text) {
                if (text) {
                    m_form.SetRowText(row, *text);
                }
                m_values->SetCellText(row, column, m_form.RowText(row));
            });
    Content()->addWidget(m_values, 1);
}

void CAddFoodDialog::ReadFields() {
    m_form.SetNameText(m_name->GetText());
    m_form.SetTypeText(m_type->GetText());
    m_form.SetServingText(m_serving->currentText());
    m_form.SetAmountText(m_amount->text());
    m_form.SetTime(m_time->time());
}

void CAddFoodDialog::ShowForm() {
    m_category->SetText(m_form.CategoryText());
    m_name->SetText(m_form.NameText());
    m_type->SetText(m_form.TypeText());
    {
        const QSignalBlocker quiet(m_serving);
        const QStringList servings = m_form.Servings();
        const QString text = m_form.ServingText();
        m_serving->clear();
        m_serving->addItems(servings);
        m_serving->setCurrentIndex(static_cast<int>(servings.indexOf(text)));
        m_serving->setEditText(text);
    }
    if (m_amount->text() != m_form.AmountText()) {
        m_amount->setText(m_form.AmountText());
    }
    m_time->setTime(m_form.GetTime());
    for (QWidget* button : m_findButtons) {
        button->setVisible(m_form.MayFind());
    }
    for (int row = 0; row < m_form.RowCount(); ++row) {
        m_values->SetCellText(row, 1, m_form.RowText(row));
    }
}

void CAddFoodDialog::OpenPicker(EPicker picker) {
    ReadFields();
    const QStringList choices = m_form.Choices(picker);
    if (choices.isEmpty()) {
        return;
    }
    m_picker = picker;
    CPickField* field = FieldOf(picker);
    m_pickList->Open(field, CAddFoodForm::HeaderOf(picker), choices, field->GetText());
}

void CAddFoodDialog::TakePicked(const QString& row) {
    const EPicker next = m_form.Pick(m_picker, row);
    ShowForm();
    if (next != EPicker::None) {
        FieldOf(next)->setFocus();
        OpenPicker(next);
        return;
    }
    m_serving->setFocus();
}

void CAddFoodDialog::Find() {
    CFindDialog dialog(QString::fromLatin1(kFoodsTexts.findPrompt), m_form.FindState(),
                       CFindDialog::EFields::NameAndType, this);
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    ReadFields();
    if (m_form.Find(dialog.GetName(), dialog.GetTypes())) {
        ShowForm();
    }
}

void CAddFoodDialog::FindNext() {
    if (!m_form.HasFindTexts()) {
        Find();
        return;
    }
    ReadFields();
    if (m_form.FindNext()) {
        ShowForm();
    }
}

CPickField* CAddFoodDialog::FieldOf(EPicker picker) const {
    switch (picker) {
        case EPicker::Name:
            return m_name;
        case EPicker::Type:
            return m_type;
        default:
            return m_category;
    }
}

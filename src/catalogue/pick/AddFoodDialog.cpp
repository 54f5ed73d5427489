#include "catalogue/pick/AddFoodDialog.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QTabBar>
#include <QTimeEdit>
#include <algorithm>

#include "catalogue/items/CatalogueKinds.h"
#include "catalogue/items/TextLimits.h"
#include "catalogue/pick/ValuesGrid.h"
#include "controls/DropField.h"
#include "controls/NumberField.h"
#include "controls/PickField.h"
#include "controls/SearchField.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int kPreferredWidth = 460;
constexpr int kPreferredHeight = 560;
constexpr int kServingCharacters = 4;
constexpr int kAmountCharacters = 7;

const CCatalogueKind& Foods() {
    return KindOf(ECatalogueKind::Foods);
}

}  // namespace

CAddFoodDialog::CAddFoodDialog(CAddFoodForm& form, QWidget* parent)
    : CPickDialog(u"Add Food"_s, form,
                  {Foods().item.findPrompt, CFindDialog::EFields::NameAndType, Foods().tips.find,
                   Foods().tips.findNext},
                  parent),
      m_form(form) {
    SetPreferredSize(kPreferredWidth, kPreferredHeight);
    AddSearchField();
    AddKindTabs();
    AddFields();
    m_values = CreateValuesGrid(m_form);
    Content()->addWidget(m_values, 1);
    AddPickList();
    CAddFoodDialog::ShowForm();
    if (form.IsNew()) {
        SearchField()->setFocus();
    } else {
        CAddFoodDialog::ContinueWithFound();
    }
}

CAddFoodDialog::~CAddFoodDialog() = default;

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
        m_kinds->addTab(QLatin1StringView(KindOf(CatalogueOf(kind)).capitalized));
    }
    connect(m_kinds, &QTabBar::currentChanged, this, [this](int tab) {
        m_form.SetTime(TimeField()->time());
        m_form.SetKind(m_form.Kinds()[tab]);
        ShowForm();
    });
    Content()->addWidget(m_kinds);
}

void CAddFoodDialog::AddFields() {
    QFormLayout* form = AddForm();
    AddPickFields(form);
    QLayout* serving = CreateServingRow();
    AddRow(form, u"Serving:"_s, serving, m_serving);
    AddTimeRow(form, m_form.HasTime() ? u"Time:"_s : QString());
    TimeField()->setVisible(m_form.HasTime());
}

QLayout* CAddFoodDialog::CreateServingRow() {
    m_serving = new CDropField(this);
    SetUpListField(m_serving, u"Serving"_s, kServingCharacters, kLongestServingName);
    connect(m_serving, &CDropField::Opening, this, [this] {
        m_form.OfferServings();
        m_serving->addItems(m_form.Servings().mid(m_serving->count()));
    });
    connect(m_serving, &QComboBox::activated, this, [this](int index) {
        ReadFields();
        m_form.SelectServing(index);
        ShowForm();
    });

    m_amount = CreateNumberField(u"amount"_s, this);
    m_amount->setAccessibleName(u"Amount"_s);
    m_amount->setMaximumWidth(m_amount->fontMetrics().averageCharWidth() * kAmountCharacters +
                              m_amount->fontMetrics().height());
    for (QLineEdit* edit : {m_serving->lineEdit(), m_amount}) {
        connect(edit, &QLineEdit::editingFinished, this, [this] {
            ReadFields();
            ShowForm();
        });
    }

    connect(m_amount, &QLineEdit::textEdited, this, [this](const QString& text) {
        if (m_form.FollowAmount(text)) {
            ShowValues();
        }
    });

    QHBoxLayout* row = CreateRow();
    row->addWidget(m_serving, 1);
    row->addWidget(new QLabel(u"X"_s, this));
    row->addWidget(m_amount);
    return row;
}

void CAddFoodDialog::ReadFields() {
    CPickDialog::ReadFields();
    m_form.SetServingText(m_serving->currentText());
    m_form.SetAmountText(m_amount->text());
}

void CAddFoodDialog::ShowForm() {
    CPickDialog::ShowForm();
    {
        const QSignalBlocker quiet(m_kinds);
        const std::vector<EItemKind> kinds = m_form.Kinds();
        m_kinds->setCurrentIndex(
            static_cast<int>(std::ranges::find(kinds, m_form.GetKind()) - kinds.begin()));
    }
    {
        const QSignalBlocker quiet(m_serving);
        const QStringList servings = m_form.Servings();
        const QString text = m_form.ServingText();
        m_serving->clear();
        m_serving->addItems(servings);
        m_serving->setCurrentIndex(static_cast<int>(servings.indexOf(text)));
        m_serving->lineEdit()->setMaxLength(
            std::max(kLongestServingName, static_cast<int>(text.size())));
        m_serving->setEditText(text);
    }
    if (m_amount->text() != m_form.AmountText()) {
        m_amount->setText(m_form.AmountText());
    }
    SetFindVisible(m_form.MayFind());
    ShowValues();
}

void CAddFoodDialog::ShowValues() {
    for (int row = 0; row < m_form.RowCount(); ++row) {
        m_values->SetCellText(row, 1, m_form.RowText(row));
    }
}

void CAddFoodDialog::ContinueWith(EPicker next) {
    if (next == EPicker::None) {
        m_serving->setFocus();
        return;
    }
    FieldOf(next)->setFocus();
    OpenPicker(next);
}

void CAddFoodDialog::ContinueWithFound() {
    m_amount->setFocus();
    m_amount->selectAll();
}

#include "catalogue/pick/PickDialog.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimeEdit>

#include "catalogue/pick/SearchColumns.h"
#include "controls/PickField.h"
#include "controls/PickList.h"
#include "controls/SearchField.h"
#include "profile/DateEdit.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int kNarrowSpacing = 4;
constexpr int kButtonMargin = 10;
}  // namespace

CPickDialog::CPickDialog(const QString& title, CPickForm& form, const CFindTexts& texts,
                         QWidget* parent)
    : CDialog(title, parent), m_form(form), m_texts(texts) {}

bool CPickDialog::CloseOverlay() {
    const bool wasOpen = m_pickList->IsOpen() || m_search->IsOpen();
    m_pickList->Close();
    m_search->Close();
    return wasOpen;
}

void CPickDialog::AddSearchField() {
    m_search = new CSearchField(
        SearchColumns(m_form.SearchTitles()),
        [this](const QString& text) {
            m_found = m_form.Search(text);
            return CSearchRows{.count = static_cast<int>(std::ssize(m_found.items)),
                               .text =
                                   [this](int row, int column) {
                                       return m_form.SearchCell(m_found.items[row], column);
                                   },
                               .note = m_found.note,
                               .hint = m_found.hint,
                               .isPending = m_found.isPending};
        },
        OverlayParent(), this);
    connect(m_search, &CSearchField::Picked, this, [this](int row) {
        ReadFields();
        const bool isPicked = m_form.PickFound(m_found.items[row]);
        ShowForm();
        if (isPicked) {
            ContinueWithFound();
        }
    });
    Content()->addWidget(m_search);
    m_search->PrepareWhileIdle([this] { return m_form.PrepareSearch(); });
}

void CPickDialog::AddPickFields(QFormLayout* form) {
    m_category = AddPickField(form, EPicker::Category, u"Category"_s);
    m_name = AddPickField(form, EPicker::Name, u"Name"_s);
    m_type = AddPickField(form, EPicker::Type, u"Type"_s);
}

CPickField* CPickDialog::AddPickField(QFormLayout* form, EPicker picker, const QString& name) {
    const bool isEditable = picker != EPicker::Category;
    auto* field = new CPickField(isEditable, name, this);
    field->setObjectName(name.toLower());
    if (isEditable) {
        field->SetMaxLength(kShortText);
    }
    connect(field, &CPickField::PickRequested, this, [this, picker] { OpenPicker(picker); });
    form->addRow(name + u':', field);
    return field;
}

void CPickDialog::AddTimeRow(QFormLayout* form, const QString& label) {
    m_time = CreateTimeField(this);
    QHBoxLayout* row = CreateRow();
    row->addWidget(m_time);
    row->addStretch(1);

    const auto addButton = [&](const QString& text, const char* tip, auto slot) {
        auto* button = new QPushButton(text, this);
        button->setObjectName(QLatin1StringView(tip));
        button->setAccessibleName(button->objectName());
        button->setToolTip(button->objectName());
        button->setAutoDefault(false);
        // Narrow screens have no room for the platform's usual button width.
        const QSize size = button->fontMetrics().size(Qt::TextShowMnemonic, text);
        button->setFixedWidth(size.width() + kButtonMargin);
        connect(button, &QPushButton::clicked, this, slot);
        row->addWidget(button);
        m_findButtons.push_back(button);
    };
    addButton(u"&Find..."_s, m_texts.find, &CPickDialog::Find);
    addButton(u"Find &next"_s, m_texts.findNext, &CPickDialog::FindNext);
    AddRow(form, label, row, m_time);
}

void CPickDialog::AddPickList() {
    m_pickList = new CPickList(OverlayParent());
    connect(m_pickList, &CPickList::Picked, this, [this](const QString& row) {
        const EPicker next = m_form.Pick(m_picker, row);
        ShowForm();
        ContinueWith(next);
    });
}

void CPickDialog::AddRow(QFormLayout* form, const QString& label, QLayout* row, QWidget* buddy) {
    auto* text = new QLabel(label);
    text->setBuddy(buddy);
    form->addRow(text, row);
}

QHBoxLayout* CPickDialog::CreateRow() {
    auto* row = new QHBoxLayout;
    row->setSpacing(kNarrowSpacing);
    return row;
}

void CPickDialog::SetUpListField(QComboBox* field, const QString& name, int characters,
                                 int length) {
    field->setObjectName(name.toLower());
    field->setAccessibleName(name);
    field->setEditable(true);
    field->setInsertPolicy(QComboBox::NoInsert);
    field->setCompleter(nullptr);
    field->lineEdit()->setAccessibleName(name);
    field->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    field->setMinimumContentsLength(characters);
    field->lineEdit()->setMaxLength(length);
}

void CPickDialog::ReadFields() {
    m_form.SetNameText(m_name->GetText());
    m_form.SetTypeText(m_type->GetText());
    m_form.SetTime(m_time->time());
}

void CPickDialog::ShowForm() {
    m_category->SetText(m_form.CategoryText());
    m_name->SetText(m_form.NameText());
    m_type->SetText(m_form.TypeText());
    m_time->setTime(m_form.GetTime());
}

void CPickDialog::OpenPicker(EPicker picker) {
    ReadFields();
    const CPickChoices choices = m_form.Choices(picker);
    if (choices.rows.isEmpty()) {
        return;
    }
    m_picker = picker;
    CPickField* field = FieldOf(picker);
    m_pickList->Open(field, {PickerHeader(picker), choices.rows, choices.note}, field->GetText());
}

CPickField* CPickDialog::FieldOf(EPicker picker) const {
    switch (picker) {
        case EPicker::Name:
            return m_name;
        case EPicker::Type:
            return m_type;
        default:
            return m_category;
    }
}

void CPickDialog::SetFindVisible(bool isVisible) {
    for (QWidget* button : m_findButtons) {
        button->setVisible(isVisible);
    }
}

void CPickDialog::Find() {
    CFindDialog dialog(QString::fromLatin1(m_texts.prompt), m_form.FindState(), m_texts.fields,
                       this);
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    ReadFields();
    if (m_form.Find(dialog.GetName(), dialog.GetTypes())) {
        ShowForm();
        ContinueWithFound();
    }
}

void CPickDialog::FindNext() {
    if (!m_form.HasFindTexts()) {
        Find();
        return;
    }
    ReadFields();
    if (m_form.FindNext()) {
        ShowForm();
        ContinueWithFound();
    }
}

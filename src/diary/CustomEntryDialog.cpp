#include "diary/CustomEntryDialog.h"

#include <QFormLayout>
#include <QLineEdit>
#include <QVBoxLayout>

#include "controls/Grid.h"
#include "profile/DateEdit.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int kPreferredWidth = 380;
constexpr int kPreferredHeight = 380;
constexpr int kLeastValueRows = 4;
constexpr int kValueCharacters = 11;
/// The capacity of an entry's name.
constexpr int kNameLength = 64;
}  // namespace

CCustomEntryDialog::CCustomEntryDialog(CCustomEntryForm& form, QWidget* parent)
    : CDialog(u"Custom entry"_s, parent),
      m_form(form),
      m_name(new QLineEdit(this)),
      m_time(CreateTimeField(this)) {
    SetPreferredSize(kPreferredWidth, kPreferredHeight);
    m_name->setObjectName(u"name"_s);
    m_name->setMaxLength(kNameLength);
    m_time->setTime(m_form.GetTime());
    QFormLayout* fields = AddForm();
    fields->addRow(u"Name:"_s, m_name);
    fields->addRow(u"Time:"_s, m_time);
    AddValues();
    m_name->setFocus();
}

void CCustomEntryDialog::AddValues() {
    m_values = new CGrid(EGridKind::Values, {u"Nutrient (unit)"_s, u"Value"_s}, u"Nutrients"_s);
    m_values->setObjectName(u"values"_s);
    m_values->setMinimumHeight(m_values->fontMetrics().height() * 2 * kLeastValueRows);
    m_values->setColumnWidth(1, m_values->fontMetrics().averageCharWidth() * kValueCharacters);
    m_values->SetRowCount(m_form.RowCount());
    for (int row = 0; row < m_form.RowCount(); ++row) {
        m_values->SetCellText(row, 0, m_form.RowTitle(row));
        m_values->SetCellText(row, 1, m_form.RowText(row));
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

bool CCustomEntryDialog::Confirm() {
    m_form.SetNameText(m_name->text());
    m_form.SetTime(m_time->time());
    return m_form.Confirm();
}

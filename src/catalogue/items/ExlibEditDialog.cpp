#include "catalogue/items/ExlibEditDialog.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

#include "catalogue/items/TextLimits.h"
#include "controls/NumberField.h"
#include "controls/PickField.h"
#include "controls/PickList.h"
#include "platform/Messages.h"

using namespace Qt::StringLiterals;

CExlibEditDialog::CExlibEditDialog(CVelmoraDoc& doc, const CExerciseItem& item, int position,
                                   QWidget* parent)
    : CDialog(u"Edit exlib"_s, parent), m_doc(doc), m_item(item), m_position(position) {
    const CExlibFields fields = ExlibFieldsOf(item, doc.Preferences());
    Content()->addWidget(new QLabel(u"Edit exercise:"_s));
    QFormLayout* form = AddForm();
    const auto addField = [&](EPicker picker, const QString& name, const QString& text) {
        const bool isEditable = picker != EPicker::Category;
        auto* field = new CPickField(isEditable, name, this);
        field->setObjectName(name.toLower());
        if (isEditable) {
            // As long as an import keeps it, so that a typed text survives an exchange.
            field->SetMaxLength(kLongestText);
        }
        field->SetText(text);
        connect(field, &CPickField::PickRequested, this,
                [this, picker, field] { OpenPicker(picker, field); });
        form->addRow(name + u':', field);
        return field;
    };
    m_name = addField(EPicker::Name, u"Name"_s, fields.name);
    m_type = addField(EPicker::Type, u"Type"_s, fields.type);
    m_category =
        addField(EPicker::Category, u"Category"_s,
                 doc.Database().Categories().NameOf(ECatalogueKind::Exercises, fields.categoryId));
    QWidget* energyRow = MakeEnergyRow(fields);
    auto* energyLabel = new QLabel(u"Energy:"_s);
    energyLabel->setBuddy(m_energy);
    form->addRow(energyLabel, energyRow);
    Content()->addStretch(1);

    m_pickList = new CPickList(OverlayParent());
    connect(m_pickList, &CPickList::Picked, this,
            [this](const QString& row) { m_picking->SetText(row); });
    m_name->setFocus();
    SetPreferredSize(360, 300);
}

QWidget* CExlibEditDialog::MakeEnergyRow(const CExlibFields& fields) {
    auto* row = new QWidget;
    m_energy = CreateNumberField(u"energy"_s);
    m_energy->setText(fields.energy);
    m_energy->setAccessibleName(u"Energy"_s);
    m_unit = new QLabel;
    m_unit->setObjectName(u"unit"_s);
    m_met = new QCheckBox(u"MET"_s);
    m_met->setObjectName(u"met"_s);
    m_met->setChecked(fields.isMet);
    connect(m_met, &QCheckBox::toggled, this, &CExlibEditDialog::ChangeRating);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_energy, 1);
    layout->addWidget(m_unit);
    layout->addWidget(m_met);
    // The row keeps its layout when the unit is hidden.
    m_unit->setMinimumWidth(
        m_unit->fontMetrics().horizontalAdvance(ExlibRateUnit(m_doc.Preferences().energyUnit)));
    ShowUnit();
    return row;
}

void CExlibEditDialog::ShowUnit() {
    const QString unit =
        m_met->isChecked() ? QString() : ExlibRateUnit(m_doc.Preferences().energyUnit);
    m_unit->setText(unit);
    m_energy->setAccessibleDescription(unit);
}

void CExlibEditDialog::ChangeRating() {
    m_item.SetMet(0);
    m_item.SetEnergyRateKcalPerMinute(0);
    m_energy->clear();
    ShowUnit();
}

CExlibFields CExlibEditDialog::ReadFields() const {
    return {m_doc.Database().Categories().IdOf(ECatalogueKind::Exercises, m_category->GetText()),
            m_name->GetText(), m_type->GetText(), m_energy->text(), m_met->isChecked()};
}

void CExlibEditDialog::OpenPicker(EPicker picker, CPickField* field) {
    const CExlibFields fields = ReadFields();
    const CPickChoices choices = PickChoices(m_doc.Database(), ECatalogueKind::Exercises, picker,
                                             fields.categoryId, fields.name);
    if (choices.rows.isEmpty()) {
        ShowMessage(choices.refusal);
        return;
    }
    m_picking = field;
    m_pickList->Open(field, {PickerHeader(picker), choices.rows, choices.note}, field->GetText());
}

bool CExlibEditDialog::CloseOverlay() {
    const bool wasOpen = m_pickList->IsOpen();
    m_pickList->Close();
    return wasOpen;
}

bool CExlibEditDialog::Confirm() {
    CExerciseItem item = m_item;
    const std::optional<QString> refusal =
        TakeExlibFields(m_doc.Database(), m_doc.Preferences(), ReadFields(), m_position, item);
    if (refusal) {
        ShowMessage(*refusal);
        return false;
    }
    m_item = item;
    return true;
}

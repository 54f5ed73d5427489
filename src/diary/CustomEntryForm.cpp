#include "diary/CustomEntryForm.h"

#include <algorithm>

#include "catalogue/items/CatalogueKinds.h"
#include "platform/Messages.h"
#include "platform/NumberText.h"

using namespace Qt::StringLiterals;

CCustomEntryForm::CCustomEntryForm(CVelmoraDoc& doc, QTime time)
    : m_doc(doc), m_time(time), m_nutrients(doc.Preferences().DisplayedNutrients()) {
    std::erase(m_nutrients, kEnergyIndex);
    m_nutrients.insert(m_nutrients.begin(), kEnergyIndex);
}

QString CCustomEntryForm::RowTitle(int row) const {
    return m_doc.NutrientNames().value(m_nutrients[row]);
}

QString CCustomEntryForm::RowText(int row) const {
    const int nutrient = m_nutrients[row];
    return m_doc.Preferences().FormatNutrient(nutrient, m_values.at(nutrient));
}

void CCustomEntryForm::SetRowText(int row, const QString& text) {
    if (text == RowText(row) || IsTypedTooLarge(text)) {
        return;
    }
    const int nutrient = m_nutrients[row];
    m_values.at(nutrient) = m_doc.Preferences().ReadNutrient(nutrient, text);
}

bool CCustomEntryForm::Confirm() {
    const QString name = m_name.trimmed();
    if (name.isEmpty()) {
        ShowMessage(QString::fromLatin1(KindOf(ECatalogueKind::Foods).item.noName),
                    EMessageIcon::Information);
        return false;
    }
    m_result = {EItemKind::Food, m_time, 1, {}};
    m_result.item.SetCategoryId(-1);
    m_result.item.SetName(name);
    m_result.item.SetServingName(0, kOneServing);
    m_result.item.SetServingWeight(0, 1);
    m_result.item.SetNutrientValues(m_values);
    return true;
}

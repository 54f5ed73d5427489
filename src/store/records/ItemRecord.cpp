#include "store/records/ItemRecord.h"

#include "platform/CutText.h"
#include "platform/Messages.h"
#include "store/records/RecordFit.h"

using namespace Qt::StringLiterals;

namespace {
PropertyValue EmptyValue(EPropertyType type) {
    switch (type) {
        case EPropertyType::Int16:
            return qint16{0};
        case EPropertyType::Int32:
            return qint32{0};
        case EPropertyType::Double:
            return 0.0;
        case EPropertyType::Text:
            return QString();
        case EPropertyType::FileTime:
            return qint64{0};
        case EPropertyType::Blob:
            return QByteArray();
    }
    Q_UNREACHABLE();
}

bool IsNutrient(int index, const char* wrongIndex) {
    if (index >= 0 && index < kNutrientCount) {
        return true;
    }
    ShowMessage(QLatin1StringView(wrongIndex));
    return false;
}
}  // namespace

CItemRecord::CItemRecord(const CRecordLayout& layout) : m_layout(&layout) {
    m_properties.reserve(layout.Count());
    for (const CPropertyDescription& property : layout.properties) {
        m_properties.push_back(EmptyValue(property.type));
    }
}

void CItemRecord::Clear() {
    for (std::size_t i = 0; i < m_properties.size(); ++i) {
        m_properties[i] = EmptyValue(m_layout->properties[i].type);
    }
}

bool CItemRecord::SetProperties(PropertyList&& properties) {
    if (!HasTypesOf(properties, *m_layout)) {
        return false;
    }
    for (std::size_t i = 0; i < properties.size(); ++i) {
        if (auto* text = std::get_if<QString>(&properties[i])) {
            text->truncate(CutText(*text, m_layout->properties[i].capacity).size());
        } else if (auto* number = std::get_if<double>(&properties[i])) {
            *number = std::isfinite(*number) ? *number : 0.0;
        }
    }
    m_properties.swap(properties);
    return true;
}

void CItemRecord::SetText(int number, const QString& text) {
    QString stored = text;
    stored.truncate(CutText(stored, m_layout->properties[number].capacity).size());
    Set(number, std::move(stored));
}

CNutrientItem::CNutrientItem(const CRecordLayout& layout, int firstNutrient)
    : CItemRecord(layout), m_firstNutrient(firstNutrient) {}

double CNutrientItem::GetNutrientValue(int index) const {
    if (!IsNutrient(index, "GetNutrientValue --> WRONG INDEX")) {
        return 0.0;
    }
    return Get<double>(m_firstNutrient + index);
}

void CNutrientItem::SetNutrientValue(int index, double value) {
    if (IsNutrient(index, "SetNutrientValue --> WRONG INDEX")) {
        Set(m_firstNutrient + index, value);
    }
}

NutrientValues CNutrientItem::GetNutrientValues() const {
    NutrientValues values{};
    for (int i = 0; i < kNutrientCount; ++i) {
        values[i] = Get<double>(m_firstNutrient + i);
    }
    return values;
}

void CNutrientItem::SetNutrientValues(const NutrientValues& values) {
    for (int i = 0; i < kNutrientCount; ++i) {
        Set(m_firstNutrient + i, values[i]);
    }
}

// The typed values that records are made of.
#pragma once

#include <QByteArray>
#include <QString>
#include <array>
#include <variant>
#include <vector>

/// Stored codes of the value types.
enum class EPropertyType : quint16 {
    Int16 = 2,
    Int32 = 3,
    Double = 5,
    Text = 31,
    FileTime = 64,
    Blob = 65,
};

/// One alternative per type; FileTime is the 64-bit integer.
using PropertyValue = std::variant<qint16, qint32, double, QString, qint64, QByteArray>;

inline EPropertyType TypeOf(const PropertyValue& value) {
    // In the order of the variant's alternatives.
    constexpr std::array<EPropertyType, std::variant_size_v<PropertyValue>> kTypes = {
        EPropertyType::Int16, EPropertyType::Int32,    EPropertyType::Double,
        EPropertyType::Text,  EPropertyType::FileTime, EPropertyType::Blob};
    return kTypes[value.index()];
}

/// Empty for a value that is not a text.
inline const QString& TextOf(const PropertyValue& value) {
    static const QString kNone;
    const auto* text = std::get_if<QString>(&value);
    return text == nullptr ? kNone : *text;
}

/// The values of one record; the property number is the index in the list.
using PropertyList = std::vector<PropertyValue>;

inline constexpr int kMaximumProperties = 0xFFFF;
/// Reads all values of a record, where a reader may also ask for the first few only.
inline constexpr int kAllProperties = kMaximumProperties;

/// Full identifier: number in the high 16 bits, type in the low 16.
constexpr quint32 PropertyId(quint16 number, EPropertyType type) {
    return static_cast<quint32>(number) << 16 | static_cast<quint16>(type);
}

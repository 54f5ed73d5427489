#include "store/records/RecordFit.h"

#include <algorithm>
#include <cmath>

#include "platform/FileTime.h"

EValueFault ValueFaultOf(const PropertyValue& value, const CPropertyDescription& property) {
    if (TypeOf(value) != property.type) {
        return EValueFault::OtherType;
    }
    if (TextOf(value).size() > property.capacity) {
        return EValueFault::TooLong;
    }
    if (const auto* number = std::get_if<double>(&value);
        number != nullptr && !std::isfinite(*number)) {
        return EValueFault::NotFinite;
    }
    if (const auto* moment = std::get_if<FileTime>(&value);
        moment != nullptr && !DateOf(*moment).isValid()) {
        return EValueFault::NoDate;
    }
    return EValueFault::None;
}

bool HasTypesOf(const PropertyList& properties, const CRecordLayout& layout) {
    return std::ranges::equal(properties, layout.properties, {}, TypeOf,
                              &CPropertyDescription::type);
}

bool FitsLayout(const PropertyList& properties, const CRecordLayout& layout) {
    return std::ranges::equal(properties, layout.properties,
                              [](const PropertyValue& value, const CPropertyDescription& property) {
                                  return ValueFaultOf(value, property) == EValueFault::None;
                              });
}

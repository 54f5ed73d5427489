// Whether a record is as its layout says.
#pragma once

#include "store/records/RecordLayout.h"

/// What is wrong with a value.
enum class EValueFault { None, OtherType, TooLong, NotFinite, NoDate };
EValueFault ValueFaultOf(const PropertyValue& value, const CPropertyDescription& property);

/// Whether a record has as many values as its layout, of the same types.
bool HasTypesOf(const PropertyList& properties, const CRecordLayout& layout);
/// The same, and each of them is without fault.
bool FitsLayout(const PropertyList& properties, const CRecordLayout& layout);

// Whether a record is as the program writes it.
#pragma once

#include <QString>
#include <optional>

#include "store/records/RecordLayout.h"

/// The layout of a record in a database of `layout`: the settings of a view are kept beside the
/// items of two of them.
const CRecordLayout& LayoutOfRecord(const PropertyList& properties, const CRecordLayout& layout);

/// What is wrong with the record, as it continues a sentence: "has 76 values instead of 77".
/// Nothing when it is sound.
std::optional<QString> FaultOf(const PropertyList& properties, const CRecordLayout& layout);

// The stored form of a record.
//
// A 16-bit property count; one tag byte per property: its type, with the high bit set when the
// value is zero or empty; then the values that are not, in order. Numbers are little-endian, texts
// are UTF-16 after a 32-bit count of units, blobs follow a 32-bit count of bytes.
#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <optional>

#include "store/engine/PropertyValue.h"

/// Overwrites `body`, reusing its memory.
void EncodeRecord(const PropertyList& properties, QByteArray& body);
/// False when `body` is not a record or has bytes left over. The list gets the length of the
/// record, but only its first `most` values are read: the rest are unspecified, and what follows
/// them is not checked.
bool DecodeRecord(QByteArrayView body, PropertyList& properties, int most = kAllProperties);

/// Property 0 widened to 64 bits; nothing when it is missing or cannot be sorted by.
std::optional<qint64> KeyOf(const PropertyList& properties);

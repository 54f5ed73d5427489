// The stored form of a record.
//
// A 16-bit property count; one tag byte a property: its type, with the high bit set when the value
// is zero or empty; then the values of the others in order. Numbers are little-endian, texts are
// UTF-16 after a 32-bit count of units, blobs follow a 32-bit count of bytes.
#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <optional>

#include "store/engine/PropertyValue.h"

/// Replaces what `body` holds; its memory is used again.
void EncodeRecord(const PropertyList& properties, QByteArray& body);
/// False when `body` is no record; every byte must be accounted for. The list gets the length of
/// the record, but only its first `most` values are read: the rest are unspecified.
bool DecodeRecord(QByteArrayView body, PropertyList& properties, int most = kAllProperties);

/// Property 0 widened to 64 bits; nothing unless it is a record with a sortable key.
std::optional<qint64> KeyOf(const PropertyList& properties);

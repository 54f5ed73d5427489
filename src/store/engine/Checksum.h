// A checksum that detects changed bytes. It is stored in files, so it never changes; it is no
// protection against someone who makes bytes to match it.
#pragma once

#include <QByteArrayView>

/// The same on every machine. `seed` continues an earlier checksum.
quint64 ChecksumOf(QByteArrayView bytes, quint64 seed = 0);
/// Continues a checksum by a number.
quint64 ChecksumWith(quint64 checksum, quint64 number);

// A category's stored picture as an icon.
#pragma once

#include <QIcon>

/// `block` begins with the bitmap information header; bytes after the picture are ignored. A larger
/// picture is scaled down to 256 x 256 pixels. Returns a null icon when `block` is empty, cannot be
/// read, or claims more than a million pixels and more than it has bytes.
QIcon CategoryIcon(const QByteArray& block);

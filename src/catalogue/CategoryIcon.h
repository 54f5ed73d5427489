// A category's stored picture as an icon.
#pragma once

#include <QIcon>

/// `block` begins with the bitmap information header and may end in bytes that belong to no
/// picture. A null icon when it is empty or cannot be read.
QIcon CategoryIcon(const QByteArray& block);

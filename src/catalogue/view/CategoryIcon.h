// A category's stored picture as an icon.
#pragma once

#include <QIcon>

/// `block` begins with the bitmap information header and may end in bytes that belong to no
/// picture. At most 256 x 256 pixels come out of a larger one. A null icon when it is empty, cannot
/// be read, or would take more than 64 MB to decode.
QIcon CategoryIcon(const QByteArray& block);

// Raw access to a volume file.
#pragma once

#include <QByteArray>
#include <functional>

/// Reads `size` bytes of the volume as they are on disk; fewer at its end.
using VolumeReader = std::function<QByteArray(qint64 offset, qint64 size)>;

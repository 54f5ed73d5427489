#include "catalogue/CategoryIcon.h"

#include <QPixmap>
#include <QtEndian>

namespace {
constexpr qsizetype kFileHeaderBytes = 14;
constexpr quint32 kInfoHeaderBytes = 40;
constexpr quint32 kBitFields = 3;
constexpr quint32 kMaskBytes = 12;

quint32 NumberAt(const QByteArray& block, qsizetype offset) {
    return qFromLittleEndian<quint32>(block.constData() + offset);
}

/// Where the pixels begin in a whole bitmap file: behind both headers, the colour masks that stand
/// outside a short information header, and the palette.
quint32 PixelOffset(const QByteArray& block) {
    const quint32 headerBytes = NumberAt(block, 0);
    const quint32 bitsPerPixel = NumberAt(block, 12) >> 16U;
    const quint32 compression = NumberAt(block, 16);
    quint32 colors = NumberAt(block, 32);
    if (colors == 0 && bitsPerPixel <= 8) {
        colors = 1U << bitsPerPixel;
    }
    const bool hasMasks = headerBytes == kInfoHeaderBytes && compression == kBitFields;
    return static_cast<quint32>(kFileHeaderBytes) + headerBytes + (hasMasks ? kMaskBytes : 0) +
           4 * (colors & 0xFFFFU);
}
}  // namespace

QIcon CategoryIcon(const QByteArray& block) {
    if (block.size() < static_cast<qsizetype>(kInfoHeaderBytes) ||
        NumberAt(block, 0) < kInfoHeaderBytes || NumberAt(block, 0) > block.size()) {
        return {};
    }
    QByteArray file("BM");
    file.resize(kFileHeaderBytes, '\0');
    qToLittleEndian(static_cast<quint32>(kFileHeaderBytes + block.size()), file.data() + 2);
    qToLittleEndian(PixelOffset(block), file.data() + 10);
    QPixmap picture;
    return picture.loadFromData(file + block, "BMP") ? QIcon(picture) : QIcon();
}

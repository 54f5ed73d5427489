#include "catalogue/view/CategoryIcon.h"

#include <QPixmap>
#include <QtEndian>
#include <algorithm>
#include <cstdlib>

namespace {
constexpr qsizetype kFileHeaderBytes = 14;
constexpr quint32 kInfoHeaderBytes = 40;
constexpr quint32 kBitFields = 3;
constexpr quint32 kMaskBytes = 12;
/// A picture of more pixels must have as many bytes: a few bytes can claim any size, and a volume
/// may hold a picture for each category.
constexpr qint64 kMostClaimedPixels = 1LL << 20U;
/// Longer side of an icon in pixels.
constexpr int kLargestSide = 256;

quint32 NumberAt(const QByteArray& block, qsizetype offset) {
    return qFromLittleEndian<quint32>(block.constData() + offset);
}

bool IsDecodable(const QByteArray& block) {
    if (block.size() < static_cast<qsizetype>(kInfoHeaderBytes) ||
        NumberAt(block, 0) < kInfoHeaderBytes || NumberAt(block, 0) > block.size()) {
        return false;
    }
    const auto width = static_cast<qint32>(NumberAt(block, 4));
    const qint64 height = static_cast<qint32>(NumberAt(block, 8));  // negative from the top down
    const qint64 mostPixels = std::max<qint64>(kMostClaimedPixels, block.size());
    return width > 0 && std::abs(height) <= mostPixels / width;
}

/// Offset of the pixels in a whole bitmap file: after both headers, the colour masks (which are
/// part of a longer information header) and the palette.
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
    if (!IsDecodable(block)) {
        return {};
    }
    QByteArray file("BM");
    file.resize(kFileHeaderBytes, '\0');
    qToLittleEndian(static_cast<quint32>(kFileHeaderBytes + block.size()), file.data() + 2);
    qToLittleEndian(PixelOffset(block), file.data() + 10);
    QImage picture;
    if (!picture.loadFromData(file + block, "BMP")) {
        return {};
    }
    if (std::max(picture.width(), picture.height()) > kLargestSide) {
        picture = picture.scaled(kLargestSide, kLargestSide, Qt::KeepAspectRatio,
                                 Qt::SmoothTransformation);
    }
    return QPixmap::fromImage(picture);
}

#include "store/engine/VolumeHeader.h"

#include <QFileInfo>
#include <QtEndian>
#include <algorithm>
#include <cstring>

namespace {
// Offsets in the header of an SQLite file; its numbers are big-endian.
constexpr int kPageSizeAt = 16;
constexpr int kWriteFormatAt = 18;
constexpr int kReadFormatAt = 19;
constexpr int kUserVersionAt = 60;
constexpr int kApplicationIdAt = 68;
constexpr char kMagic[] = "SQLite format 3";  // with its final NUL
}  // namespace

bool IsBlank(const VolumeHeader& header) {
    return std::ranges::all_of(header, [](uchar byte) { return byte == 0; });
}

int PageSizeIn(const VolumeHeader& header) {
    constexpr int kLargest = 65536;  // too large for its field, which then holds 1
    const int size = qFromBigEndian<quint16>(&header[kPageSizeAt]);
    return size > 1 ? size : kLargest;
}

quint32 VersionIn(const VolumeHeader& header) {
    return qFromBigEndian<quint32>(&header[kUserVersionAt]);
}

EPlatformError JudgeHeader(const VolumeHeader& header, qint64 fileSize, CFileKind kind) {
    if (std::memcmp(header.data(), kMagic, sizeof(kMagic)) != 0 ||
        qFromBigEndian<quint32>(&header[kApplicationIdAt]) != kind.applicationId) {
        return kErrorBadFormat;
    }
    const quint32 version = VersionIn(header);
    if (version == 0 || version > kind.version) {
        return version == 0 ? kErrorBadFormat : kErrorNewerVersion;
    }
    if (version < kind.version) {
        return kErrorOlderVersion;
    }
    // Format 1 is the only one we write; with another, SQLite would create files beside this one.
    // A file shorter than its header SQLite would treat as empty.
    if (header[kWriteFormatAt] != 1 || header[kReadFormatAt] != 1 || fileSize < kVolumeHeaderSize) {
        return kErrorCorrupt;
    }
    return kErrorSuccess;
}

EPlatformError OpenJudged(QFile& file, CFileKind kind) {
    const QFileInfo info(file);
    if (!info.exists()) {
        return kErrorFileNotFound;
    }
    // Opening a pipe would wait for its other end.
    if (!info.isFile() || !file.open(QIODevice::ReadOnly)) {
        return kErrorAccessDenied;
    }
    VolumeHeader header{};
    std::ranges::copy(file.peek(kVolumeHeaderSize), header.begin());
    return file.error() == QFileDevice::NoError ? JudgeHeader(header, file.size(), kind)
                                                : kErrorInputOutput;
}

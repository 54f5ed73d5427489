#include "store/engine/VolumeHeader.h"

#include <QtEndian>
#include <algorithm>
#include <cstring>

namespace {
// Places in the header of an SQLite file; numbers in it are big-endian.
constexpr int kWriteFormatAt = 18;
constexpr int kReadFormatAt = 19;
constexpr int kUserVersionAt = 60;
constexpr int kApplicationIdAt = 68;
constexpr char kMagic[] = "SQLite format 3";  // its final NUL belongs to it
}  // namespace

bool IsBlank(const VolumeHeader& header) {
    return std::ranges::all_of(header, [](uchar byte) { return byte == 0; });
}

EPlatformError JudgeHeader(const VolumeHeader& header, qint64 fileSize) {
    if (std::memcmp(header.data(), kMagic, sizeof(kMagic)) != 0 ||
        qFromBigEndian<quint32>(&header[kApplicationIdAt]) != kVolumeApplicationId) {
        return kErrorBadFormat;
    }
    const auto version = qFromBigEndian<quint32>(&header[kUserVersionAt]);
    if (version != kVolumeVersion) {
        return version > kVolumeVersion ? kErrorNewerVersion : kErrorBadFormat;
    }
    // We never write any other format; with one, SQLite would make files beside this one. It would
    // take a file without a whole header for an empty one.
    if (header[kWriteFormatAt] != 1 || header[kReadFormatAt] != 1 || fileSize < kVolumeHeaderSize) {
        return kErrorCorrupt;
    }
    return kErrorSuccess;
}

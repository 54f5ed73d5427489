// The first bytes of a volume file, which say whether it is one.
#pragma once

#include <QFile>
#include <array>

#include "store/engine/PlatformError.h"

inline constexpr quint32 kVolumeApplicationId = 0x564C4D52;  ///< "VLMR"
inline constexpr quint32 kVolumeVersion = 1;
inline constexpr int kVolumeHeaderSize = 100;
inline constexpr int kVolumePageSize = 8192;
using VolumeHeader = std::array<uchar, kVolumeHeaderSize>;

/// What a header says its file is.
struct CFileKind {
    quint32 applicationId;
    quint32 version;
};

[[nodiscard]] bool IsBlank(const VolumeHeader& header);
/// In bytes, of a header that JudgeHeader accepts; never 0.
[[nodiscard]] int PageSizeIn(const VolumeHeader& header);
[[nodiscard]] quint32 VersionIn(const VolumeHeader& header);
/// kErrorBadFormat for a file that is not of that kind, kErrorNewerVersion, kErrorOlderVersion, or
/// kErrorCorrupt.
/// `fileSize` in bytes; a header beyond the end of a shorter file is filled up with zeros.
EPlatformError JudgeHeader(const VolumeHeader& header, qint64 fileSize,
                           CFileKind kind = {kVolumeApplicationId, kVolumeVersion});
/// Opens `file` for reading, at its start, and judges its header. kErrorFileNotFound,
/// kErrorAccessDenied when it cannot be opened or is not a regular file, otherwise as JudgeHeader.
EPlatformError OpenJudged(QFile& file, CFileKind kind = {kVolumeApplicationId, kVolumeVersion});

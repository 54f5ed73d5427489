// The platform's error numbers, as the messages show them.
#pragma once

/// Stored nowhere, shown in messages: the numbers are part of the system's texts.
enum [[nodiscard]] EPlatformError : int{
    kErrorSuccess = 0,           kErrorFileNotFound = 2,      kErrorAccessDenied = 5,
    kErrorNotEnoughMemory = 8,   kErrorBadFormat = 11,        kErrorOutOfMemory = 14,
    kErrorWriteFault = 29,  ///< the disk does not confirm what was written
    kErrorSharingViolation = 32, kErrorInvalidParameter = 87, kErrorDiskFull = 112,
    kErrorInvalidName = 123,     kErrorAlreadyExists = 183,   kErrorOperationAborted = 995,
    kErrorFileInvalid = 1006,  ///< the open volume was removed, replaced or overwritten
    kErrorInputOutput = 1117,    kErrorNewerVersion = 1150,   kErrorOlderVersion = 1306,
    kErrorCorrupt = 1392,
};

/// Whether an operation on a table failed because it is damaged, or not ours.
[[nodiscard]] constexpr bool IsTableDamage(EPlatformError error) {
    return error == kErrorCorrupt || error == kErrorBadFormat;
}

/// The one table from SQLite result codes (extended ones included) to platform numbers.
EPlatformError PlatformErrorOf(int sqliteResult);

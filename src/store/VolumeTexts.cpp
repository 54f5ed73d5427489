#include "store/VolumeTexts.h"

#include "platform/Messages.h"

using namespace Qt::StringLiterals;

namespace {
struct CRefusalRow {
    EPlatformError error;
    QLatin1StringView text;  ///< "%s" is the path
};
constexpr CRefusalRow kRefusals[] = {
    {kErrorBadFormat, "The file '%s' is not a data file of Velmora."_L1},
    {kErrorNewerVersion, "The file '%s' was written by a newer version of Velmora."_L1},
    {kErrorOlderVersion,
     "The file '%s' was written by an older version of Velmora. It is brought up to date when it "
     "is opened."_L1},
    {kErrorCorrupt, "The file '%s' is damaged."_L1},
    {kErrorSharingViolation, "The file '%s' is in use by another program."_L1},
    {kErrorAccessDenied, "The file '%s' cannot be read and written."_L1},
    {kErrorDiskFull, "There is no room on the disk for the file '%s'."_L1},
    {kErrorInputOutput, "The disk reports an error in the file '%s'."_L1},
    {kErrorOperationAborted, "Opening the file '%s' was cancelled."_L1},
    {kErrorNotEnoughMemory, "There is not enough memory to open the file '%s'."_L1},
};
}  // namespace

void ShowFailedMount(EPlatformError error) {
    ShowMessage(FormatText("ERROR: CeMountDBVol failed (%ld)"_L1, {error}), EMessageIcon::Stop);
}

void ShowCannotOpen(const QString& reason) {
    ShowMessage({.text = u"Cannot open database."_s, .icon = EMessageIcon::Stop, .detail = reason});
}

QString RefusalText(EPlatformError error, const QString& path) {
    for (const CRefusalRow& row : kRefusals) {
        if (row.error == error) {
            return FormatText(row.text, {path});
        }
    }
    return FormatText("The file '%s' cannot be opened."_L1, {path});
}

QString LostVolumeText(EVolumeState state, const QString& path) {
    switch (state) {
        case EVolumeState::Removed:
            return FormatText("The file '%s' was removed or renamed by another program."_L1,
                              {path});
        case EVolumeState::Replaced:
            return FormatText("Another program replaced the file '%s'."_L1, {path});
        case EVolumeState::Overwritten:
            return FormatText(
                "Another program wrote into the file '%s' while Velmora had it open. "
                "Nothing more is read from it or written to it until it is opened "
                "again."_L1,
                {path});
        case EVolumeState::Sound:
            break;
    }
    return {};
}

QString CopyText(EPlatformError error, const QString& path) {
    switch (error) {
        case kErrorSuccess:
            return FormatText("A copy was saved as '%s' and checked."_L1, {path});
        case kErrorCorrupt:
            return FormatText("A copy was saved as '%s', but it is damaged."_L1, {path});
        case kErrorWriteFault:
            return FormatText(
                "A copy was saved as '%s' and checked, but the disk reports an error: "
                "after a loss of power it may be gone."_L1,
                {path});
        default:
            return FormatText("Cannot save a copy as '%s' (error# %d)."_L1, {path, error});
    }
}

QString KeptJournalText(const QString& kept, const QString& path) {
    return FormatText(
        "The journal beside the file '%s' does not belong to it and was not used. It "
        "is kept as '%s'."_L1,
        {path, kept});
}

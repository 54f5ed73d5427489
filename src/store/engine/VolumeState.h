#pragma once

/// What has become of the open volume.
enum class EVolumeState {
    Sound,
    Removed,      ///< no file at its path; the open file still holds everything
    Replaced,     ///< another file at its path; the open file still holds everything
    Overwritten,  ///< another program wrote into the file; stays so until the volume is closed
};

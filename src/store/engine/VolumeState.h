#pragma once

/// What has become of the open volume.
enum class EVolumeState {
    Sound,
    Removed,      ///< its path leads nowhere; the open file still holds everything
    Replaced,     ///< its path leads to another file; the open file still holds everything
    Overwritten,  ///< the file has content of somebody else; stays so until the volume is closed
};

#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// How the play-out of a received stream is aligned.
namespace Enums::IpSyncMode {

enum Type : int {
    Asynchronous = 0,  ///< as it arrives
    LinkOffset = 1,    ///< a fixed time behind the media clock, as AES67 has it
    FrameSync = 2,     ///< through the frame synchroniser
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Asynchronous, "Asynchronous"},
    {LinkOffset, "Link offset"},
    {FrameSync, "Frame sync"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::IpSyncMode

#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// What a multiviewer tile's caption says.
namespace Enums::CaptionMode {

enum Type : int {
    Off = 0,
    ChannelName = 1,
    SourceName = 2,
    UserText = 3,
    Tsl = 4,  ///< the text that a TSL UMD message brings
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Off, "Off"},
    {ChannelName, "Channel name"},
    {SourceName, "Source name"},
    {UserText, "User text"},
    {Tsl, "TSL"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::CaptionMode

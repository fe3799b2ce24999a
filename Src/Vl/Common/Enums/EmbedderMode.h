#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// What an audio embedder does with the audio that the video brings along.
namespace Enums::EmbedderMode {

enum Type : int {
    Off = 0,     ///< video passes untouched
    Append = 1,  ///< fill free groups only
    Overwrite = 2,
    Clear = 3,  ///< remove all audio
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Off, "Off"},
    {Append, "Append"},
    {Overwrite, "Overwrite"},
    {Clear, "Clear"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::EmbedderMode

#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// The sample format of an audio stream: linear PCM as in RFC 3551 and RFC 3190, or AES3 channels carried
/// transparently as in SMPTE ST 2110-31.
namespace Enums::Aes67PayloadFormat {

enum Type : int {
    L16 = 0,    ///< 16 bit linear PCM
    L24 = 1,    ///< 24 bit linear PCM
    AM824 = 2,  ///< AES3 subframes, transparent
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {L16, "L16"},
    {L24, "L24"},
    {AM824, "AM824"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::Aes67PayloadFormat

#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// The PTP profile: which message rates and domains are used.
namespace Enums::PtpProfile {

enum Type : int {
    Default = 0,  ///< IEEE 1588, delay request-response
    Aes67 = 1,    ///< media profile, AES67 annex A
    St2059 = 2,
    AesR16 = 3,  ///< settings that suit both
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Default, "Default"},
    {Aes67, "AES67"},
    {St2059, "ST 2059-2"},
    {AesR16, "AES-R16"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::PtpProfile

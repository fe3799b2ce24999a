#pragma once

#include <cstdint>
#include <string>
#include <system_error>

#include "Tools/boardsim/Models/GpioBlock.h"

namespace boardsim {

/// What a request of "/dev/gpio" answers: the result of the call, or its error.
struct GpioAnswer {
    int value = 0;
    std::errc error{};
};

/// The requests of the board's GPIO driver behind "/dev/gpio". The argument is the value itself:
///
/// | request | meaning      | argument                                                                  |
/// |---------|--------------|---------------------------------------------------------------------------|
/// | 0x7D03  | set level    | line in bits 0-15, level in bit 16                                        |
/// | 0x7D04  | direction    | line in bits 0-15, bit 24: an output, bit 16: its level                   |
/// | 0x7D05  | get level    | line in bits 0-15; the call gives 0 or 1                                  |
/// | 0x7D06  | take a line  | line in bits 0-15                                                         |
/// | 0x7D07  | give it back | line in bits 0-15                                                         |
///
/// Refuses other requests with ENOTTY and arguments with other bits set with EINVAL.
GpioAnswer answerGpioRequest(GpioBlock& lines, std::uint32_t request, std::uint64_t argument);

/// The request as the trace writes it: "gpio direction 3 output high", "gpio get 3".
std::string describeGpioRequest(std::uint32_t request, std::uint64_t argument);

}  // namespace boardsim

#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

#include "Tools/boardsim/Host/ActingFile.h"

namespace boardsim {

/// A chip's 8-bit registers as a kernel driver shows them in one file: the byte at offset N is register N.
struct ByteRegisters {
    std::size_t count = 0;
    std::function<std::uint8_t(std::size_t number)> get;
    std::function<void(std::size_t number, std::uint8_t value)> set;
};

/// Reading ends behind the last register; writing there is refused with EFBIG, and what reaches beyond it is
/// cut.
FileCalls registerFile(const ByteRegisters& registers);

}  // namespace boardsim

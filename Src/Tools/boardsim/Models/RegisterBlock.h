#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace boardsim {

/// Why a block wants nothing of an access, in words for the trace, which may be none; nothing: it was right.
using Refusal = std::optional<std::string>;

/// What a read finds. A refused read has a value all the same: a bus always carries something.
struct RegisterValue {
    std::uint64_t value = 0;
    Refusal refused{};
};

/// A block of registers in the FPGA, as its bus sees it. Not thread-safe.
class RegisterBlock {
public:
    RegisterBlock() = default;
    RegisterBlock(const RegisterBlock&) = delete;
    RegisterBlock& operator=(const RegisterBlock&) = delete;
    virtual ~RegisterBlock() = default;

    /// One access; a read may change what the next one finds.
    /// @param offset in bytes from the block's start
    /// @param width in bytes: 1, 2, 4 or 8 for what programs do to single registers, 16 to 64 for vectors
    virtual RegisterValue read(std::uint32_t offset, unsigned width) = 0;
    virtual Refusal write(std::uint32_t offset, unsigned width, std::uint64_t value) = 0;
};

/// The refusal of an access that is not 32 bits wide or not at a multiple of 4; nothing for the others.
inline Refusal refuseUnlessWord(std::uint32_t offset, unsigned width) {
    if (width != 4) {
        return "the registers are 32 bits wide";
    }
    if (offset % 4 != 0) {
        return "the registers are at multiples of 4";
    }
    return std::nullopt;
}

}  // namespace boardsim

#pragma once

#include <cstdint>
#include <optional>

namespace boardsim::Aarch64 {

/// When the base register takes over the computed address.
enum class Indexing : std::uint8_t {
    Offset,  ///< never
    Pre,     ///< the access is at the computed address
    Post,    ///< the access is at the base
};

/// A load or store, taken apart. Encodings: Arm Architecture Reference Manual (DDI 0487), section C4.1,
/// "Loads and Stores".
struct LoadStore {
    bool isLoad = false;
    bool isVector = false;         ///< of registers v0 to v31 instead of x0 to x30
    bool isSigned = false;         ///< a load extends the sign
    bool extendsTo64Bits = false;  ///< of a signed load; otherwise to 32
    std::uint8_t width = 0;        ///< bytes of one register
    std::uint8_t count = 1;        ///< registers: 1 or 2, one behind the other in memory
    std::uint8_t registers[2] = {0, 0};
    std::uint8_t base = 0;  ///< 31: the stack pointer
    Indexing indexing = Indexing::Offset;
    std::int64_t offset = 0;  ///< bytes, signed

    // Of the form with a register as offset.
    bool hasIndex = false;
    std::uint8_t index = 0;  ///< 31: zero
    std::uint8_t shift = 0;
    bool isIndex32Bits = false;
    bool isIndexSigned = false;
};

/// Takes an instruction word apart.
/// @return nothing for all that is no plain load or store: exclusive and atomic accesses, those of several
///         vectors, cache maintenance, literals
std::optional<LoadStore> decode(std::uint32_t word) noexcept;

}  // namespace boardsim::Aarch64

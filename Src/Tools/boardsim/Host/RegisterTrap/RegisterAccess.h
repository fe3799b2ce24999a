#pragma once

#include <cstdint>

namespace boardsim {

enum class Direction : std::uint8_t { Read, Write };

/// One access that a program made to a register window, as the bus would see it.
/// An instruction that reads and writes back makes two of them.
struct RegisterAccess {
    std::uint64_t offset = 0;  ///< byte offset into the mapped file
    std::uint64_t value = 0;  ///< what was read or written; of an access wider than 8 bytes its first 8 bytes
    std::uint8_t width = 0;   ///< bytes: 1, 2, 4 or 8; 16, 32 or 64 for vector instructions
    Direction direction = Direction::Read;

    bool operator==(const RegisterAccess&) const = default;
};

}  // namespace boardsim

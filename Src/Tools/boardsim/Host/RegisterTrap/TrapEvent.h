#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace boardsim {

/// Name of the environment variable with the path of the datagram socket that takes TrapEvents.
inline constexpr const char* kTrapSocketVariable = "BOARDSIM_TRAP_SOCKET";

enum class TrapEventKind : std::uint8_t {
    Read = 1,   ///< a register has been read
    Write = 2,  ///< a register has been written
    Seek = 3,   ///< a "screen" file has been positioned
};

/// One datagram from the library in the program to the virtual board. Both run on the same machine: numbers
/// are in host order. The events of one process arrive in the order in which they took effect.
struct TrapEvent {
    static constexpr std::uint8_t kVersion = 1;

    std::uint8_t version = kVersion;
    TrapEventKind kind = TrapEventKind::Read;
    std::uint8_t width = 0;  ///< of the register access in bytes, 1 to 64; 0 for a seek
    std::uint8_t reserved = 0;
    std::int32_t process = 0;  ///< as the program's process namespace counts
    std::int32_t thread = 0;
    std::uint32_t reserved2 = 0;
    std::uint64_t offset = 0;  ///< byte offset in the register file, or the new position of the "screen" file
    std::uint64_t value = 0;   ///< what was read or written, the first 8 bytes of it; 0 for a seek

    bool operator==(const TrapEvent&) const = default;
};

static_assert(std::is_trivially_copyable_v<TrapEvent>);
static_assert(sizeof(TrapEvent) == 32 && offsetof(TrapEvent, offset) == 16, "both sides rely on this layout");

}  // namespace boardsim

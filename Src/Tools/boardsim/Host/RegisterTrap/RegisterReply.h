#pragma once

#include <cstdint>
#include <type_traits>

namespace boardsim {

/// Names of the environment variables for registers that act: the path of the connecting socket
/// (SOCK_SEQPACKET) that answers for them, and where they are: "800-803,2000-23ff", first and last byte
/// offset of each stretch in hexadecimal.
inline constexpr const char* kRegisterSocketVariable = "BOARDSIM_REGISTER_SOCKET";
inline constexpr const char* kRegisterRangesVariable = "BOARDSIM_REGISTER_RANGES";

/// What the virtual board answers to a TrapEvent on that socket: of kind Read before a register is read, of
/// kind Write after it was written. The program waits for the answer to either. In host order.
struct RegisterReply {
    std::uint64_t value = 0;  ///< what the read finds; of no meaning after a write

    bool operator==(const RegisterReply&) const = default;
};

static_assert(std::is_trivially_copyable_v<RegisterReply> && sizeof(RegisterReply) == 8);

}  // namespace boardsim

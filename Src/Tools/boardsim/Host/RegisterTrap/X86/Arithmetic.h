#pragma once

#include <cstdint>

namespace boardsim::X86 {

/// Bits of the flag register. Intel SDM volume 1, section 3.4.3.
namespace Flag {
inline constexpr std::uint64_t Carry = 0x001;
inline constexpr std::uint64_t Parity = 0x004;
inline constexpr std::uint64_t Adjust = 0x010;
inline constexpr std::uint64_t Zero = 0x040;
inline constexpr std::uint64_t Sign = 0x080;
inline constexpr std::uint64_t Direction = 0x400;
inline constexpr std::uint64_t Overflow = 0x800;
}  // namespace Flag

/// The integer instructions as functions of type Calculation: width in bytes (1, 2, 4, 8), flags changed as
/// Intel SDM volume 2 says. Flags that it leaves undefined are cleared, except after multiply and the bit
/// tests, which leave them alone. Those with one operand ignore `right`.
std::uint64_t add(std::uint64_t left, std::uint64_t right, unsigned width, std::uint64_t& flags);
std::uint64_t addWithCarry(std::uint64_t left, std::uint64_t right, unsigned width, std::uint64_t& flags);
std::uint64_t subtract(std::uint64_t left, std::uint64_t right, unsigned width, std::uint64_t& flags);
std::uint64_t subtractWithBorrow(std::uint64_t left, std::uint64_t right, unsigned width,
                                 std::uint64_t& flags);
std::uint64_t increment(std::uint64_t left, std::uint64_t right, unsigned width, std::uint64_t& flags);
std::uint64_t decrement(std::uint64_t left, std::uint64_t right, unsigned width, std::uint64_t& flags);
std::uint64_t negate(std::uint64_t left, std::uint64_t right, unsigned width, std::uint64_t& flags);
std::uint64_t invert(std::uint64_t left, std::uint64_t right, unsigned width, std::uint64_t& flags);
std::uint64_t bitAnd(std::uint64_t left, std::uint64_t right, unsigned width, std::uint64_t& flags);
std::uint64_t bitOr(std::uint64_t left, std::uint64_t right, unsigned width, std::uint64_t& flags);
std::uint64_t bitXor(std::uint64_t left, std::uint64_t right, unsigned width, std::uint64_t& flags);
std::uint64_t shiftLeft(std::uint64_t left, std::uint64_t right, unsigned width, std::uint64_t& flags);
std::uint64_t shiftRight(std::uint64_t left, std::uint64_t right, unsigned width, std::uint64_t& flags);
std::uint64_t shiftRightSigned(std::uint64_t left, std::uint64_t right, unsigned width, std::uint64_t& flags);
std::uint64_t multiply(std::uint64_t left, std::uint64_t right, unsigned width, std::uint64_t& flags);
std::uint64_t testBit(std::uint64_t left, std::uint64_t right, unsigned width, std::uint64_t& flags);
std::uint64_t setBit(std::uint64_t left, std::uint64_t right, unsigned width, std::uint64_t& flags);
std::uint64_t resetBit(std::uint64_t left, std::uint64_t right, unsigned width, std::uint64_t& flags);
std::uint64_t complementBit(std::uint64_t left, std::uint64_t right, unsigned width, std::uint64_t& flags);

/// Whether a condition, 0 to 15 as encoded in setcc, cmovcc and jcc, holds. SDM volume 1, appendix B.
bool holds(unsigned condition, std::uint64_t flags);

/// The low `width` bytes of a value, the rest zero or copies of the sign.
std::uint64_t zeroExtend(std::uint64_t value, unsigned width);
std::int64_t signExtend(std::uint64_t value, unsigned width);

}  // namespace boardsim::X86

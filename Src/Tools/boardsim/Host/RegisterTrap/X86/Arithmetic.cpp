#include "Tools/boardsim/Host/RegisterTrap/X86/Arithmetic.h"

#include <bit>

namespace boardsim::X86 {

namespace {

using Value = std::uint64_t;

constexpr Value kArithmeticFlags =
    Flag::Carry | Flag::Parity | Flag::Adjust | Flag::Zero | Flag::Sign | Flag::Overflow;

bool topBit(Value value, unsigned width) {
    return (value >> (8 * width - 1)) & 1U;
}

void assign(Value& flags, Value flag, bool on) {
    flags = on ? flags | flag : flags & ~flag;
}

/// Clears all arithmetic flags, then sets those that follow from the result alone.
Value setFromResult(Value result, unsigned width, Value& flags) {
    result = zeroExtend(result, width);
    flags &= ~kArithmeticFlags;
    assign(flags, Flag::Zero, result == 0);
    assign(flags, Flag::Sign, topBit(result, width));
    assign(flags, Flag::Parity, std::popcount(result & 0xFFU) % 2 == 0);
    return result;
}

Value sum(Value left, Value right, Value carry, unsigned width, Value& flags) {
    const Value result = setFromResult(left + right + carry, width, flags);
    assign(flags, Flag::Carry, topBit((left & right) | ((left | right) & ~result), width));
    assign(flags, Flag::Overflow, topBit((left ^ result) & (right ^ result), width));
    assign(flags, Flag::Adjust, (left ^ right ^ result) & 0x10U);
    return result;
}

Value difference(Value left, Value right, Value borrow, unsigned width, Value& flags) {
    const Value result = setFromResult(left - right - borrow, width, flags);
    assign(flags, Flag::Carry, topBit((~left & right) | ((~left | right) & result), width));
    assign(flags, Flag::Overflow, topBit((left ^ right) & (left ^ result), width));
    assign(flags, Flag::Adjust, (left ^ right ^ result) & 0x10U);
    return result;
}

Value keepingCarry(Value flagsBefore, Value result, Value& flags) {
    assign(flags, Flag::Carry, flagsBefore & Flag::Carry);
    return result;
}

unsigned shiftCount(Value right, unsigned width) {
    return static_cast<unsigned>(right) & (width == 8 ? 63U : 31U);
}

/// Copies the chosen bit to the carry flag. @return the bit's mask
Value selectBit(Value left, Value right, unsigned width, Value& flags) {
    const Value mask = Value{1} << (right & (8 * width - 1));
    assign(flags, Flag::Carry, left & mask);
    return mask;
}

}  // namespace

Value zeroExtend(Value value, unsigned width) {
    return width == 8 ? value : value & ((Value{1} << 8 * width) - 1);
}

std::int64_t signExtend(Value value, unsigned width) {
    const unsigned unused = 64 - 8 * width;
    return static_cast<std::int64_t>(value << unused) >> unused;
}

Value add(Value left, Value right, unsigned width, Value& flags) {
    return sum(left, right, 0, width, flags);
}

Value addWithCarry(Value left, Value right, unsigned width, Value& flags) {
    return sum(left, right, flags & Flag::Carry, width, flags);
}

Value subtract(Value left, Value right, unsigned width, Value& flags) {
    return difference(left, right, 0, width, flags);
}

Value subtractWithBorrow(Value left, Value right, unsigned width, Value& flags) {
    return difference(left, right, flags & Flag::Carry, width, flags);
}

Value increment(Value left, Value, unsigned width, Value& flags) {
    const Value before = flags;
    return keepingCarry(before, sum(left, 1, 0, width, flags), flags);
}

Value decrement(Value left, Value, unsigned width, Value& flags) {
    const Value before = flags;
    return keepingCarry(before, difference(left, 1, 0, width, flags), flags);
}

Value negate(Value left, Value, unsigned width, Value& flags) {
    return difference(0, left, 0, width, flags);
}

Value invert(Value left, Value, unsigned, Value&) {
    return ~left;
}

Value bitAnd(Value left, Value right, unsigned width, Value& flags) {
    return setFromResult(left & right, width, flags);
}

Value bitOr(Value left, Value right, unsigned width, Value& flags) {
    return setFromResult(left | right, width, flags);
}

Value bitXor(Value left, Value right, unsigned width, Value& flags) {
    return setFromResult(left ^ right, width, flags);
}

Value shiftLeft(Value left, Value right, unsigned width, Value& flags) {
    const unsigned count = shiftCount(right, width);
    if (count == 0) {
        return left;
    }
    const Value result = setFromResult(left << count, width, flags);
    const bool lastOut = count <= 8 * width && ((left >> (8 * width - count)) & 1U);
    assign(flags, Flag::Carry, lastOut);
    assign(flags, Flag::Overflow, topBit(result, width) != lastOut);
    return result;
}

Value shiftRight(Value left, Value right, unsigned width, Value& flags) {
    const unsigned count = shiftCount(right, width);
    if (count == 0) {
        return left;
    }
    left = zeroExtend(left, width);
    const Value result = setFromResult(left >> count, width, flags);
    assign(flags, Flag::Carry, (left >> (count - 1)) & 1U);
    assign(flags, Flag::Overflow, topBit(left, width));
    return result;
}

Value shiftRightSigned(Value left, Value right, unsigned width, Value& flags) {
    const unsigned count = shiftCount(right, width);
    if (count == 0) {
        return left;
    }
    const std::int64_t number = signExtend(left, width);
    const Value result = setFromResult(static_cast<Value>(number >> count), width, flags);
    assign(flags, Flag::Carry, (number >> (count - 1)) & 1);
    return result;
}

Value multiply(Value left, Value right, unsigned width, Value& flags) {
    std::int64_t product = 0;
    const bool lost = __builtin_mul_overflow(signExtend(left, width), signExtend(right, width), &product);
    const auto result = static_cast<Value>(product);
    const bool truncated = lost || signExtend(result, width) != product;
    assign(flags, Flag::Carry, truncated);
    assign(flags, Flag::Overflow, truncated);
    return result;
}

Value testBit(Value left, Value right, unsigned width, Value& flags) {
    selectBit(left, right, width, flags);
    return left;
}

Value setBit(Value left, Value right, unsigned width, Value& flags) {
    return left | selectBit(left, right, width, flags);
}

Value resetBit(Value left, Value right, unsigned width, Value& flags) {
    return left & ~selectBit(left, right, width, flags);
}

Value complementBit(Value left, Value right, unsigned width, Value& flags) {
    return left ^ selectBit(left, right, width, flags);
}

bool holds(unsigned condition, Value flags) {
    const bool less = !(flags & Flag::Sign) != !(flags & Flag::Overflow);
    const bool pairs[] = {
        (flags & Flag::Overflow) != 0,
        (flags & Flag::Carry) != 0,
        (flags & Flag::Zero) != 0,
        (flags & (Flag::Carry | Flag::Zero)) != 0,
        (flags & Flag::Sign) != 0,
        (flags & Flag::Parity) != 0,
        less,
        less || (flags & Flag::Zero) != 0,
    };
    const bool inverted = condition & 1U;
    return pairs[(condition >> 1U) & 7U] != inverted;
}

}  // namespace boardsim::X86

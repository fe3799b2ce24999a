#include "Tools/boardsim/Host/RegisterTrap/X86/Execution.h"

#include <cstring>

#include "Tools/boardsim/Host/RegisterTrap/X86/Arithmetic.h"

namespace boardsim::X86 {

namespace {

constexpr std::size_t kSseWidth = 16;
constexpr std::size_t kWidestVector = 64;

}  // namespace

const std::array<Execution::Step, 17> Execution::kSteps = {
    &Execution::move,           &Execution::moveSigned,
    &Execution::moveSwapped,    &Execution::moveConditional,
    &Execution::setConditional, &Execution::arithmetic,
    &Execution::compare,        &Execution::exchange,
    &Execution::exchangeAdd,    &Execution::compareExchange,
    &Execution::vectorMove,     &Execution::vexMove,
    &Execution::vectorLowHalf,  &Execution::vectorHighHalf,
    &Execution::stringMove,     &Execution::stringStore,
    &Execution::stringLoad};

bool Execution::run() noexcept {
    const bool isString = instruction_.form >= Form::StringMove;
    if (isString) {
        return stringElement();
    }
    if (!(this->*kSteps[static_cast<std::size_t>(instruction_.form)])()) {
        return false;
    }
    registers_.advance(instruction_.length);
    return true;
}

std::uintptr_t Execution::address(const Operand& operand) const noexcept {
    auto result = static_cast<std::uint64_t>(operand.displacement);
    if (operand.base != Operand::kNoRegister) {
        result += registers_.get(static_cast<std::uint8_t>(operand.base));
    }
    if (operand.index != Operand::kNoRegister) {
        result += registers_.get(static_cast<std::uint8_t>(operand.index)) * operand.scale;
    }
    return result;
}

bool Execution::read(const Operand& operand, std::uint64_t& value) const noexcept {
    switch (operand.kind) {
        case OperandKind::General:
            value = operand.highByte ? registers_.highByte(operand.number)
                                     : zeroExtend(registers_.get(operand.number), operand.width);
            return true;
        case OperandKind::Immediate:
            value = operand.immediate;
            return true;
        case OperandKind::Memory:
            value = 0;
            return bus_.read(address(operand),
                             std::as_writable_bytes(std::span(&value, 1)).first(operand.width));
        case OperandKind::Vector:
            break;
    }
    return false;
}

bool Execution::write(const Operand& operand, std::uint64_t value) noexcept {
    switch (operand.kind) {
        case OperandKind::General:
            if (operand.highByte) {
                registers_.setHighByte(operand.number, static_cast<std::uint8_t>(value));
            } else {
                registers_.set(operand.number, operand.width, value);
            }
            return true;
        case OperandKind::Memory:
            return bus_.write(address(operand), std::as_bytes(std::span(&value, 1)).first(operand.width));
        case OperandKind::Immediate:
        case OperandKind::Vector:
            break;
    }
    return false;
}

bool Execution::move() noexcept {
    std::uint64_t value = 0;
    return read(source(), value) && write(destination(), value);
}

bool Execution::moveSigned() noexcept {
    std::uint64_t value = 0;
    return read(source(), value) &&
           write(destination(), static_cast<std::uint64_t>(signExtend(value, source().width)));
}

bool Execution::moveSwapped() noexcept {
    std::uint64_t value = 0;
    return read(source(), value) &&
           write(destination(), __builtin_bswap64(value) >> (64U - 8U * source().width));
}

bool Execution::moveConditional() noexcept {
    std::uint64_t value = 0;
    if (!read(source(), value)) {
        return false;
    }
    if (!holds(instruction_.operation->condition, registers_.flags())) {
        read(destination(), value);  // a move of 4 bytes clears the upper half also when it does not happen
    }
    return write(destination(), value);
}

bool Execution::setConditional() noexcept {
    return write(destination(), holds(instruction_.operation->condition, registers_.flags()) ? 1 : 0);
}

bool Execution::arithmetic() noexcept {
    const unsigned last = instruction_.operandCount - 1U;
    std::uint64_t left = 0;
    std::uint64_t right = 0;
    if (!read(instruction_.operands[last == 0 ? 0 : last - 1], left)) {
        return false;
    }
    if (last != 0 && !read(instruction_.operands[last], right)) {
        return false;
    }
    std::uint64_t flags = registers_.flags();
    if (!write(destination(), instruction_.operation->calculate(left, right, destination().width, flags))) {
        return false;
    }
    registers_.setFlags(flags);
    return true;
}

bool Execution::compare() noexcept {
    std::uint64_t left = 0;
    std::uint64_t right = 0;
    if (!read(destination(), left) || !read(source(), right)) {
        return false;
    }
    std::uint64_t flags = registers_.flags();
    instruction_.operation->calculate(left, right, destination().width, flags);
    registers_.setFlags(flags);
    return true;
}

bool Execution::exchange() noexcept {
    std::uint64_t left = 0;
    std::uint64_t right = 0;
    return read(destination(), left) && read(source(), right) && write(destination(), right) &&
           write(source(), left);
}

bool Execution::exchangeAdd() noexcept {
    std::uint64_t left = 0;
    std::uint64_t right = 0;
    if (!read(destination(), left) || !read(source(), right)) {
        return false;
    }
    std::uint64_t flags = registers_.flags();
    const std::uint64_t sum = add(left, right, destination().width, flags);
    if (!write(destination(), sum) || !write(source(), left)) {
        return false;
    }
    registers_.setFlags(flags);
    return true;
}

bool Execution::compareExchange() noexcept {
    const unsigned width = destination().width;
    const std::uint64_t expected = zeroExtend(registers_.get(Registers::kAccumulator), width);
    std::uint64_t found = 0;
    std::uint64_t wanted = 0;
    if (!read(destination(), found) || !read(source(), wanted)) {
        return false;
    }
    std::uint64_t flags = registers_.flags();
    subtract(expected, found, width, flags);
    // The processor writes in both cases.
    if (!write(destination(), found == expected ? wanted : found)) {
        return false;
    }
    if (found != expected) {
        registers_.set(Registers::kAccumulator, width, found);
    }
    registers_.setFlags(flags);
    return true;
}

bool Execution::vectorTransfer(std::size_t from, std::size_t clearUpTo) noexcept {
    std::array<std::byte, kWidestVector> buffer;
    if (destination().kind == OperandKind::Memory) {
        const auto data = std::span(buffer).first(destination().width);
        vectors_.get(source().number, from, data);
        return bus_.write(address(destination()), data);
    }
    const auto data = std::span(buffer).first(source().width);
    if (!bus_.read(address(source()), data)) {
        return false;
    }
    vectors_.set(destination().number, from, data);
    vectors_.clear(destination().number, from + data.size(), clearUpTo);
    return true;
}

bool Execution::vectorMove() noexcept {
    return vectorTransfer(0, kSseWidth);
}
bool Execution::vexMove() noexcept {
    return vectorTransfer(0, kWidestVector);
}
bool Execution::vectorLowHalf() noexcept {
    return vectorTransfer(0, 0);
}
bool Execution::vectorHighHalf() noexcept {
    return vectorTransfer(kSseWidth / 2, 0);
}

bool Execution::stringMove() noexcept {
    return move();
}
bool Execution::stringStore() noexcept {
    return move();
}
bool Execution::stringLoad() noexcept {
    return move();
}

bool Execution::stringElement() noexcept {
    if (!(this->*kSteps[static_cast<std::size_t>(instruction_.form)])()) {
        return false;
    }

    const std::uint64_t width = destination().width;
    const std::uint64_t step = registers_.flags() & Flag::Direction ? 0 - width : width;
    for (const Operand& operand : instruction_.operands) {
        if (operand.kind != OperandKind::Memory) {
            continue;
        }
        const auto pointer = static_cast<std::uint8_t>(operand.base);
        registers_.set(pointer, 8, registers_.get(pointer) + step);
    }
    if (instruction_.repeated) {
        registers_.set(Registers::kCounter, 8, registers_.get(Registers::kCounter) - 1);
        // The next element may lie outside the window: let the processor try.
        if (registers_.get(Registers::kCounter) != 0) {
            return true;
        }
    }
    registers_.advance(instruction_.length);
    return true;
}

}  // namespace boardsim::X86

#include "Tools/boardsim/Host/RegisterTrap/Emulator.h"

#include <array>
#include <cstring>

#include "Tools/boardsim/Host/RegisterTrap/Aarch64/Context.h"
#include "Tools/boardsim/Host/RegisterTrap/Aarch64/LoadStore.h"
#include "Tools/boardsim/Host/RegisterTrap/Disassembler.h"

namespace boardsim::Emulator {

namespace {

using Aarch64::Context;
using Aarch64::Indexing;
using Aarch64::LoadStore;

constexpr std::size_t kWidestRegister = 16;

constinit Disassembler disassembler;

std::uint64_t indexValue(const LoadStore& access, const Context& context) noexcept {
    std::uint64_t value = context.get(access.index);
    if (access.isIndex32Bits) {
        const auto low = static_cast<std::uint32_t>(value);
        value = access.isIndexSigned ? static_cast<std::uint64_t>(static_cast<std::int32_t>(low)) : low;
    }
    return value << access.shift;
}

std::uint64_t extend(const LoadStore& access, std::uint64_t value) noexcept {
    if (!access.isSigned) {
        return value;
    }
    const unsigned unused = 64 - 8U * access.width;
    const auto number = static_cast<std::uint64_t>(static_cast<std::int64_t>(value << unused) >> unused);
    return access.extendsTo64Bits ? number : static_cast<std::uint32_t>(number);
}

void setRegister(const LoadStore& access, unsigned number, std::span<const std::byte> data,
                 Context& context) noexcept {
    if (access.isVector) {
        context.setVector(number, data);
        return;
    }
    std::uint64_t value = 0;
    std::memcpy(&value, data.data(), data.size());
    context.set(number, extend(access, value));
}

void getRegister(const LoadStore& access, unsigned number, std::span<std::byte> data,
                 const Context& context) noexcept {
    if (access.isVector) {
        context.getVector(number, data);
        return;
    }
    const std::uint64_t value = context.get(number);
    std::memcpy(data.data(), &value, data.size());
}

bool store(const LoadStore& access, std::uintptr_t address, const Context& context,
           const RegisterBus& bus) noexcept {
    std::array<std::byte, kWidestRegister> buffer;
    const auto data = std::span(buffer).first(access.width);
    for (unsigned i = 0; i < access.count; ++i) {
        getRegister(access, access.registers[i], data, context);
        if (!bus.write(address + i * access.width, data)) {
            return false;
        }
    }
    return true;
}

bool load(const LoadStore& access, std::uintptr_t address, Context& context,
          const RegisterBus& bus) noexcept {
    std::array<std::array<std::byte, kWidestRegister>, 2> buffers;
    // The first register of a pair may be the base: nothing is set until both are read.
    for (unsigned i = 0; i < access.count; ++i) {
        if (!bus.read(address + i * access.width, std::span(buffers[i]).first(access.width))) {
            return false;
        }
    }
    for (unsigned i = 0; i < access.count; ++i) {
        setRegister(access, access.registers[i], std::span(buffers[i]).first(access.width), context);
    }
    return true;
}

std::uint32_t instructionAt(std::uint64_t address) noexcept {
    std::uint32_t word = 0;
    std::memcpy(&word, reinterpret_cast<const void*>(address), sizeof word);
    return word;
}

}  // namespace

bool prepare() noexcept {
    return disassembler.open();
}

Outcome finish(ucontext_t& interrupted, const RegisterBus& bus) noexcept {
    Context context(interrupted);
    const auto access = Aarch64::decode(instructionAt(context.programCounter()));
    if (!access || (access->isVector && !context.hasVectors())) {
        return Outcome::Unknown;
    }

    const std::uint64_t base = context.address(access->base);
    const std::uint64_t moved = base + static_cast<std::uint64_t>(access->offset) +
                                (access->hasIndex ? indexValue(*access, context) : 0);
    const std::uint64_t address = access->indexing == Indexing::Post ? base : moved;
    const bool done =
        access->isLoad ? load(*access, address, context, bus) : store(*access, address, context, bus);
    if (!done) {
        return Outcome::Crash;
    }
    if (access->indexing != Indexing::Offset) {
        context.setAddress(access->base, moved);
    }
    context.advance();
    return Outcome::Done;
}

void describe(const ucontext_t& context, MessageBuffer& message) noexcept {
    disassembler.describe(context.uc_mcontext.pc, message);
}

}  // namespace boardsim::Emulator

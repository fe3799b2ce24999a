#include "Tools/boardsim/Host/RegisterTrap/X86/VectorRegisters.h"

#include <cpuid.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace boardsim::X86 {

namespace {

constexpr std::size_t kLane = 16;

// Components of the XSAVE area.
constexpr unsigned kSse = 1;             // bytes 0-15 of registers 0-15
constexpr unsigned kAvx = 2;             // bytes 16-31 of registers 0-15
constexpr unsigned kUpperHalves = 6;     // bytes 32-63 of registers 0-15
constexpr unsigned kUpperRegisters = 7;  // registers 16-31
constexpr unsigned kComponents = 8;

constexpr std::size_t kSseOffset = 160;

// What the kernel writes into the part of the legacy area that the processor leaves to software.
constexpr std::size_t kMagicOffset = 464;
constexpr std::uint32_t kMagic = 0x46505853;
constexpr std::size_t kFeaturesOffset = 472;

constexpr std::size_t kInUseOffset = 512;  // XSTATE_BV

struct Component {
    std::size_t offset = 0;
    std::size_t size = 0;
};
constinit std::array<Component, kComponents> components{};

template <typename Number>
Number load(const std::byte* from) noexcept {
    Number number;
    std::memcpy(&number, from, sizeof number);
    return number;
}

}  // namespace

void VectorRegisters::findLayout() noexcept {
    constexpr unsigned kExtendedStateLeaf = 0xD;
    components[kSse] = {kSseOffset, kLane * 16};
    for (const unsigned component : {kAvx, kUpperHalves, kUpperRegisters}) {
        unsigned size = 0;
        unsigned offset = 0;
        unsigned ignored = 0;
        if (__get_cpuid_count(kExtendedStateLeaf, component, &size, &offset, &ignored, &ignored)) {
            components[component] = {offset, size};
        }
    }
}

VectorRegisters::VectorRegisters(ucontext_t& context) noexcept
    : area_(reinterpret_cast<std::byte*>(context.uc_mcontext.fpregs)) {
    if (load<std::uint32_t>(area_ + kMagicOffset) == kMagic) {
        present_ = load<std::uint64_t>(area_ + kFeaturesOffset);
    }
}

VectorRegisters::Place VectorRegisters::place(unsigned number, std::size_t lane) noexcept {
    if (number >= 16) {
        return {kUpperRegisters, (std::size_t{number - 16} * 4 + lane) * kLane};
    }
    if (lane >= 2) {
        return {kUpperHalves, (std::size_t{number} * 2 + lane - 2) * kLane};
    }
    return {lane == 0 ? kSse : kAvx, number * kLane};
}

bool VectorRegisters::isPresent(unsigned component) const noexcept {
    return component == kSse || (((present_ >> component) & 1U) && components[component].size != 0);
}

bool VectorRegisters::isInUse(unsigned component) const noexcept {
    // The kernel marks the SSE part as in use in every frame.
    return component == kSse || ((load<std::uint64_t>(area_ + kInUseOffset) >> component) & 1U);
}

void VectorRegisters::use(unsigned component) noexcept {
    // A part that is not in use counts as all zero, whatever its memory holds.
    std::memset(area_ + components[component].offset, 0, components[component].size);
    const std::uint64_t inUse = load<std::uint64_t>(area_ + kInUseOffset) | (std::uint64_t{1} << component);
    std::memcpy(area_ + kInUseOffset, &inUse, sizeof inUse);
}

std::byte* VectorRegisters::lane(const Place& where) const noexcept {
    return area_ + components[where.component].offset + where.offset;
}

void VectorRegisters::get(unsigned number, std::size_t from, std::span<std::byte> data) const noexcept {
    while (!data.empty()) {
        const Place where = place(number, from / kLane);
        const std::size_t count = std::min(data.size(), kLane - from % kLane);
        if (isPresent(where.component) && isInUse(where.component)) {
            std::memcpy(data.data(), lane(where) + from % kLane, count);
        } else {
            std::memset(data.data(), 0, count);
        }
        data = data.subspan(count);
        from += count;
    }
}

void VectorRegisters::set(unsigned number, std::size_t from, std::span<const std::byte> data) noexcept {
    while (!data.empty()) {
        const Place where = place(number, from / kLane);
        const std::size_t count = std::min(data.size(), kLane - from % kLane);
        if (isPresent(where.component)) {
            if (!isInUse(where.component)) {
                use(where.component);
            }
            std::memcpy(lane(where) + from % kLane, data.data(), count);
        }
        data = data.subspan(count);
        from += count;
    }
}

void VectorRegisters::clear(unsigned number, std::size_t from, std::size_t to) noexcept {
    while (from < to) {
        const Place where = place(number, from / kLane);
        const std::size_t count = std::min(to - from, kLane - from % kLane);
        if (isPresent(where.component) && isInUse(where.component)) {
            std::memset(lane(where) + from % kLane, 0, count);
        }
        from += count;
    }
}

}  // namespace boardsim::X86

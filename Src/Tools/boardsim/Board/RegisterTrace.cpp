#include "Tools/boardsim/Board/RegisterTrace.h"

#include <algorithm>
#include <array>
#include <cinttypes>
#include <cstdio>
#include <cstring>

namespace boardsim {
namespace {

constexpr unsigned kWidestValue = 8;  // bytes that an event has room for

}  // namespace

std::optional<TrapEvent> readTrapEvent(std::string_view datagram) {
    TrapEvent event;
    if (datagram.size() != sizeof event) {
        return std::nullopt;
    }
    std::memcpy(static_cast<void*>(&event), datagram.data(), sizeof event);
    const bool isKnown = event.kind >= TrapEventKind::Read && event.kind <= TrapEventKind::Seek;
    return event.version == TrapEvent::kVersion && isKnown ? std::optional(event) : std::nullopt;
}

std::string describe(const TrapEvent& event) {
    if (event.kind == TrapEventKind::Seek) {
        return "screen seek " + std::to_string(event.offset);
    }
    const unsigned bytes = event.width;
    const int digits = static_cast<int>(2 * std::min(bytes, kWidestValue));
    std::array<char, 96> text{};
    std::snprintf(text.data(), text.size(), "fpga %s 0x%04" PRIx64 " %u 0x%0*" PRIx64,
                  event.kind == TrapEventKind::Read ? "read" : "write", event.offset, 8 * bytes, digits,
                  event.value);
    return text.data();
}

}  // namespace boardsim

#pragma once

#include <gmock/gmock.h>

#include <cstdint>
#include <ostream>

namespace registertrap {

/// What the trap library sends, as the receiver takes it apart.
struct Event {
    std::uint8_t version;
    std::uint8_t kind;
    std::uint8_t width;
    std::uint8_t unused;
    std::int32_t process;
    std::int32_t thread;
    std::uint32_t unused2;
    std::uint64_t offset;
    std::uint64_t value;
};

inline void PrintTo(const Event& event, std::ostream* out) {
    *out << "kind " << +event.kind << " width " << +event.width << " offset " << event.offset << " value "
         << event.value;
}

constexpr std::uint8_t kRead = 1, kWrite = 2, kSeek = 3;

inline auto IsEvent(std::uint8_t kind, std::uint8_t width, std::uint64_t offset, std::uint64_t value) {
    using testing::Field;
    return testing::AllOf(Field("version", &Event::version, 1), Field("kind", &Event::kind, kind),
                          Field("width", &Event::width, width), Field("offset", &Event::offset, offset),
                          Field("value", &Event::value, value));
}

}  // namespace registertrap

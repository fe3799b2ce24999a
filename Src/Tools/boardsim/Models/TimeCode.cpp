#include "Tools/boardsim/Models/TimeCode.h"

namespace boardsim {
namespace {

constexpr std::uint64_t kSecondsOfMinute = 60;
constexpr std::uint64_t kMinutesOfHour = 60;
constexpr std::uint64_t kHoursOfDay = 24;

/// Two decimal digits, their binary groups between them and behind.
struct Field {
    unsigned shift;      ///< of the units
    std::uint64_t tens;  ///< the mask of the tens, which are 8 bits further up

    constexpr std::uint64_t mask() const { return 0xFULL << shift | tens << (shift + 8); }
    constexpr std::uint64_t valueIn(TimeCodeBits bits) const {
        return (bits >> shift & 0xF) + 10 * (bits >> (shift + 8) & tens);
    }
    constexpr TimeCodeBits bitsOf(std::uint64_t value) const {
        return value % 10 << shift | value / 10 << (shift + 8);
    }
};

constexpr Field kFrames{0, 0x3};
constexpr Field kSeconds{16, 0x7};
constexpr Field kMinutes{32, 0x7};
constexpr Field kHours{48, 0x3};
constexpr std::uint64_t kDigits = kFrames.mask() | kSeconds.mask() | kMinutes.mask() | kHours.mask();

constexpr TimeCodeBits digits(std::uint64_t secondsOfDay, std::uint64_t frames) {
    const std::uint64_t minutes = secondsOfDay / kSecondsOfMinute;
    return kFrames.bitsOf(frames) | kSeconds.bitsOf(secondsOfDay % kSecondsOfMinute) |
           kMinutes.bitsOf(minutes % kMinutesOfHour) | kHours.bitsOf(minutes / kMinutesOfHour % kHoursOfDay);
}

constexpr std::uint64_t secondsIn(TimeCodeBits bits) {
    return (kHours.valueIn(bits) * kMinutesOfHour + kMinutes.valueIn(bits)) * kSecondsOfMinute +
           kSeconds.valueIn(bits);
}

}  // namespace

TimeCodeBits encode(const TimeCode& time) {
    TimeCodeBits bits = digits(time.seconds, time.frames);
    unsigned shift = 4;
    for (const std::uint8_t groups : time.userBits) {
        bits |= (groups & TimeCodeBits{0xF}) << shift | TimeCodeBits{groups} >> 4 << (shift + 8);
        shift += 16;
    }
    return bits;
}

TimeCodeBits later(TimeCodeBits bits, std::uint64_t frames, FrameRate rate) {
    const auto perSecond = static_cast<std::uint64_t>(rate);
    const std::uint64_t day = kHoursOfDay * kMinutesOfHour * kSecondsOfMinute * perSecond;
    const std::uint64_t sum = (secondsIn(bits) * perSecond + kFrames.valueIn(bits) + frames % day) % day;
    return (bits & ~kDigits) | digits(sum / perSecond, sum % perSecond);
}

}  // namespace boardsim

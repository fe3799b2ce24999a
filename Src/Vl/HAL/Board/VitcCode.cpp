#include "Vl/HAL/Board/VitcCode.h"

#include <array>
#include <cstddef>

namespace Valen {
namespace {

constexpr std::uint32_t kDigit = 0xF;
constexpr std::uint32_t kMinute = 60;
constexpr std::uint32_t kHour = 60 * kMinute;
constexpr std::uint32_t kHoursOfDay = 24;

/// The numbers of a code, from the lowest half of a word up, and where their tens end.
enum Number : std::size_t { Frames, Seconds, Minutes, Hours };
using Numbers = std::array<std::uint32_t, 4>;
constexpr Numbers kTens = {0x3, 0x7, 0x7, 0x3};

std::uint32_t framesAt(std::uint32_t milliseconds, VitcRate rate) {
    return rate == VitcRate::Frames25 ? milliseconds / 40
                                      : static_cast<std::uint32_t>(std::uint64_t{milliseconds} * 30 / 1000);
}

std::uint32_t millisecondsAt(std::uint32_t frames, VitcRate rate) {
    return rate == VitcRate::Frames25 ? frames * 40 : frames * 1000 / 30;
}

std::uint32_t packHalf(std::uint32_t number, std::uint32_t tens, std::uint32_t userBits) {
    return number % 10 | (userBits & kDigit) << 4 | (number / 10 & tens) << 8 | (userBits >> 4) << 12;
}

std::uint32_t numberOf(std::uint32_t half, std::uint32_t tens) {
    return (half & kDigit) + (half >> 8 & tens) * 10;
}

std::uint8_t userBitsOf(std::uint32_t half) {
    return static_cast<std::uint8_t>((half >> 4 & kDigit) | (half >> 12 & kDigit) << 4);
}

}  // namespace

VitcCode VitcCode::pack(const Vitc& time, VitcRate rate) {
    const Numbers numbers = {framesAt(time.milliseconds, rate), time.seconds % kMinute,
                             time.seconds / kMinute % kMinute, time.seconds / kHour % kHoursOfDay};
    const auto half = [&](Number i) { return packHalf(numbers[i], kTens[i], time.userBits[i]); };
    return {half(Frames) | half(Seconds) << 16, half(Minutes) | half(Hours) << 16};
}

Vitc VitcCode::unpack(VitcRate rate) const {
    const Numbers halves = {low & 0xFFFF, low >> 16, high & 0xFFFF, high >> 16};
    const auto number = [&](Number i) { return numberOf(halves[i], kTens[i]); };
    Vitc time;
    time.frames = number(Frames);
    time.milliseconds = millisecondsAt(time.frames, rate);
    time.seconds = number(Hours) * kHour + number(Minutes) * kMinute + number(Seconds);
    for (std::size_t i = 0; i < halves.size(); ++i) {
        time.userBits[i] = userBitsOf(halves[i]);
    }
    return time;
}

}  // namespace Valen

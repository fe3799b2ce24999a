#include "Tools/boardsim/Models/TemperatureRegister.h"

namespace boardsim {
namespace {

constexpr std::uint32_t kLowByte = 0xFF;
constexpr int kOffset = 128;
constexpr unsigned kShift = 8;

}  // namespace

TemperatureRegister::TemperatureRegister(TemperatureCode code, int celsius, std::uint32_t others)
    : code_(code), value_(others) {
    setCelsius(celsius);
}

void TemperatureRegister::setCelsius(int celsius) {
    if (code_ == TemperatureCode::Shifted) {
        value_ = static_cast<std::uint32_t>(celsius) << kShift;
    } else {
        value_ = (value_ & ~kLowByte) | (static_cast<std::uint32_t>(celsius + kOffset) & kLowByte);
    }
}

RegisterValue TemperatureRegister::read(std::uint32_t offset, unsigned width) {
    return {value_, refuseUnlessWord(offset, width)};
}

Refusal TemperatureRegister::write(std::uint32_t offset, unsigned width, std::uint64_t) {
    if (code_ == TemperatureCode::Shifted) {
        return "it can only be read";
    }
    return refuseUnlessWord(offset, width);
}

}  // namespace boardsim

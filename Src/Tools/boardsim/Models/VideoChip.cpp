#include "Tools/boardsim/Models/VideoChip.h"

namespace boardsim {

VideoChip::VideoChip(std::initializer_list<ResetValue> resetValues) {
    for (const auto& [number, value] : resetValues) {
        afterPowerOn_[number] = value;
    }
    registers_ = afterPowerOn_;
}

void VideoChip::losePower() {
    RegisterChip::losePower();
    registers_ = afterPowerOn_;
}

bool VideoChip::writeRegister(std::uint8_t number, std::uint8_t value) {
    set(number, value);
    return true;
}

}  // namespace boardsim

#include "Tools/boardsim/Models/RegisterChip.h"

namespace boardsim {

bool RegisterChip::start(I2cDirection direction) {
    wantsPointer_ = direction == I2cDirection::Write;
    return true;
}

bool RegisterChip::take(std::uint8_t byte) {
    if (wantsPointer_) {
        pointer_ = byte;
        wantsPointer_ = false;
        return true;
    }
    const std::uint8_t number = pointer_;
    pointer_ = following(number);
    return writeRegister(number, byte);
}

std::uint8_t RegisterChip::give() {
    const std::uint8_t number = pointer_;
    pointer_ = following(number);
    return readRegister(number);
}

}  // namespace boardsim

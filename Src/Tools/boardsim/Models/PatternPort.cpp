#include "Tools/boardsim/Models/PatternPort.h"

namespace boardsim {

std::errc PatternPort::setPattern(std::uint32_t lane, bool isOn) {
    if (lane >= lanes_) {
        return std::errc::invalid_argument;
    }
    if (isOn) {
        on_.insert(lane);
    } else {
        on_.erase(lane);
    }
    return {};
}

}  // namespace boardsim

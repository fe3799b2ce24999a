#include "Tools/boardsim/Models/InbandPort.h"

namespace boardsim {

std::optional<std::int32_t> InbandPort::fibreLength(std::uint32_t port) const {
    if (port >= fibreLengths_.size()) {
        return std::nullopt;
    }
    return fibreLengths_[port];
}

}  // namespace boardsim

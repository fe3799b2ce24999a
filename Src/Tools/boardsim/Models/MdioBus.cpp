#include "Tools/boardsim/Models/MdioBus.h"

namespace boardsim {

std::uint16_t MdioBus::read(unsigned address, unsigned reg) {
    Phy* phy = answering(address);
    const std::uint16_t data = phy ? phy->read(reg) : kNobody;
    tell({false, address, reg, data, phy != nullptr});
    return data;
}

void MdioBus::write(unsigned address, unsigned reg, std::uint16_t data) {
    Phy* phy = answering(address);
    if (phy) {
        phy->write(reg, data);
    }
    tell({true, address, reg, data, phy != nullptr});
}

Phy* MdioBus::answering(unsigned address) {
    Phy* phy = phys_[address];
    return phy && phy->answers() ? phy : nullptr;
}

void MdioBus::tell(const MdioFrame& frame) const {
    if (listener_) {
        listener_(frame);
    }
}

}  // namespace boardsim

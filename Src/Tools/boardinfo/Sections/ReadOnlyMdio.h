#pragma once

#include <memory>
#include <utility>

#include "Vl/HAL/Bus/MDIO.h"

namespace boardinfo::sections {

/// Lets a PHY's driver read and keeps it from writing. A write is done when the register holds the value
/// already, as the page register mostly does, and fails otherwise.
class ReadOnlyMdio : public Valen::HAL::MDIO {
public:
    explicit ReadOnlyMdio(std::shared_ptr<Valen::HAL::MDIO> mdio) : mdio_(std::move(mdio)) {}

    bool setReg(int reg, int value) override { return mdio_->getReg(reg) == (value & 0xFFFF); }
    int getReg(int reg) override { return mdio_->getReg(reg); }
    void changePhyAddress(int phyAddress) override { mdio_->changePhyAddress(phyAddress); }

private:
    std::shared_ptr<Valen::HAL::MDIO> mdio_;
};

}  // namespace boardinfo::sections

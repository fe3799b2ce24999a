#include "Vl/HAL/Bus/AlteraSpi.h"

#include "Vl/HAL/Board/CPInterface.h"

namespace Valen {
namespace {

enum Register : unsigned int {
    TxData = 0x4,
    Status = 0x8,
    Control = 0xC,
};

constexpr unsigned int kTransmitterReady = 1U << 6;  // of Status
constexpr unsigned int kForceSelect = 1U << 10;      // of Control
constexpr unsigned int kNoSlave = 0;

}  // namespace

AlteraSpi::AlteraSpi(CPInterface* cp, unsigned long base) : cp_(cp), base_(base) {}

bool AlteraSpi::selectSlave(int slave) {
    return cp_->writeFPGA(address(Control), static_cast<unsigned int>(slave) | kForceSelect);
}

bool AlteraSpi::unselect() {
    waitReady();
    return cp_->writeFPGA(address(Control), kNoSlave);
}

bool AlteraSpi::writeWord(unsigned int word) {
    waitReady();
    return cp_->writeFPGA(address(TxData), word);
}

unsigned int AlteraSpi::waitReady() {
    unsigned int status = 0;
    while (cp_->readFPGA(address(Status), status) && (status & kTransmitterReady) == 0) {
    }
    return status;
}

unsigned int AlteraSpi::address(unsigned int offset) const {
    return static_cast<unsigned int>(base_ + offset);
}

}  // namespace Valen

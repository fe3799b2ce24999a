#pragma once

#include <cstdint>

#include "Vl/HAL/Bus/SpiBus.h"

namespace Valen {

class CPInterface;

/// The SPI master core of the FPGA, driven through the control processor's register access.
/// Does not own the control processor, which must outlive it. One thread at a time. Nothing is logged.
///
/// The core may take as long as it likes: a core that never becomes ready makes the caller wait forever,
/// reading its status without a pause. That is meant. Only where the register space has no such core at all
/// nothing is waited for, and the operation fails.
/// Source: Intel's Embedded Peripherals IP User Guide, "SPI Core".
class AlteraSpi : public SpiBus {
public:
    /// @param base byte offset of the core's registers in the FPGA; its low 32 bits count. Touches no
    /// hardware.
    AlteraSpi(CPInterface* cp, unsigned long base);

    /// Selects by a mask of slaves, at once: what is still being sent is not waited for.
    bool selectSlave(int slave) override;
    bool unselect() override;
    bool writeWord(unsigned int word) override;

    /// Waits until the transmitter takes a word. @return the status that said so; 0 when there is no core.
    unsigned int waitReady();

private:
    unsigned int address(unsigned int offset) const;

    CPInterface* cp_;
    std::uint64_t base_;
};

}  // namespace Valen

#pragma once

#include "Vl/Common/Files/Descriptor.h"
#include "Vl/HAL/Chips/ADVInterface.h"

namespace Valen {

/// The video chip behind a kernel SPI driver, which shows the registers as a file: the byte at offset n is
/// register n.
class ADV9371 : public ADVInterface {
public:
    /// Opens the register file for reading and writing, close-on-exec. Without it every access fails.
    explicit ADV9371(const char* path);

    /// @return what write(2) returned: 1 on success, -1 on failure.
    int setReg(int reg, std::uint8_t value) override;
    /// @return 0 for a register that cannot be read: who calls cannot tell.
    int getReg(int reg) override;

private:
    Descriptor fd_;
};

}  // namespace Valen

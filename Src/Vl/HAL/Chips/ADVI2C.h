#pragma once

#include "Vl/HAL/Bus/I2CSlave.h"
#include "Vl/HAL/Chips/ADVInterface.h"

namespace Valen {

/// The video chip on an I2C bus.
class ADVI2C : public ADVInterface {
public:
    /// Opens the device with this name in the I2C registry. @return false, without opening anything, for a
    /// name that is not registered; false when its bus cannot be opened or its address not be selected.
    bool init(const char* name);

    /// @return 1 on success, 0 on failure.
    int setReg(int reg, std::uint8_t value) override;
    /// @return -1 on failure.
    int getReg(int reg) override;

private:
    I2CSlave i2c_;
};

}  // namespace Valen

#pragma once

#include "Vl/Common/Files/Descriptor.h"

namespace Valen::HAL {

/// Single GPIO lines of the control processor, driven through the board's character device "/dev/gpio".
/// Owns the device's descriptor. Nothing is logged. Each operation is one call of the device's driver and may
/// be made from any thread.
class GPIO {
public:
    /// Opens the device read-only; isOpen() tells whether it is there.
    GPIO();

    bool isOpen() const { return device_.isValid(); }

    /// Reserves or releases a line. Lines are numbered as in sysfs (see getBase); only the low 16 bits of
    /// `pin` are passed, here and below. @return the driver's result: 0 on success, negative on failure.
    int request(int pin);
    int free(int pin);
    /// Sets direction and first level; the driver gives `a` (bit 24) and `b` (bit 16) their meaning.
    /// @return as request().
    int setdir(int pin, bool a, bool b);
    /// Drives the line high for any `value` but 0. @return as request().
    int setPin(int pin, int value);
    /// @return whether the line is high; false also when the driver refuses.
    bool getPin(int pin);

    /// @return the first line number of the first listed controller in "/sys/class/gpio/" whose label begins
    ///         with `label`, or -1. A controller whose base cannot be read as a number is passed over, rather
    ///         than taken for one that begins at line 0.
    static int getBase(const char* label);

private:
    int call(unsigned long code, unsigned long argument);

    Descriptor device_;
};

}  // namespace Valen::HAL

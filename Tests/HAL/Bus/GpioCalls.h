#pragma once

#include <cstdint>
#include <vector>

/// One request to the driver of "/dev/gpio".
struct GpioCall {
    unsigned long code;
    unsigned long argument;

    bool operator==(const GpioCall&) const = default;
};

/// Stands in for the driver of "/dev/gpio" while it lives: records what is asked of it and answers `result`.
/// The test program's own ioctl leads here. One at a time.
class GpioCalls {
public:
    GpioCalls();
    ~GpioCalls();

    int result = 0;
    std::vector<GpioCall> calls;
};

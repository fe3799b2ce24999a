#pragma once

#include <cstdint>

namespace Valen {

/// The older board's miscellaneous register, core "misc_pio" of the FPGA.
struct hd24_misc_pio_ctrl {
    std::uint32_t value = 0;

    /// The FPGA's temperature in degrees Celsius, in the low byte with 128 added.
    int celsius() const { return static_cast<int>(value & 0xFF) - 128; }
};
static_assert(sizeof(hd24_misc_pio_ctrl) == 4);

/// One of the newer board's temperature registers.
struct orca_misc_pio_ctrl {
    std::uint32_t value = 0;

    /// Degrees Celsius, above eight bits that are something else.
    int celsius() const { return static_cast<int>(value >> 8); }
};
static_assert(sizeof(orca_misc_pio_ctrl) == 4);

}  // namespace Valen

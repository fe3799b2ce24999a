#pragma once

#include <cstdint>
#include <string>

#include "Tools/boardsim/Models/SyncBlock.h"

namespace boardsim {

/// The central sync block.
struct SyncPart {
    std::string core;
    SyncSettings settings{};

    bool operator==(const SyncPart&) const = default;
};

/// The miscellaneous register of the FPGA.
struct MiscPart {
    std::string core;
    int celsius = 0;           ///< what its low byte tells, -128 to 127
    std::uint32_t others = 0;  ///< bits 8 to 31, where they are

    bool operator==(const MiscPart&) const = default;
};

/// A register of the FPGA that tells the temperature of one of its dies.
struct TemperaturePart {
    std::string core;
    int celsius = 0;  ///< from 0 up

    bool operator==(const TemperaturePart&) const = default;
};

}  // namespace boardsim

#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// The state of a PTP port: portState of IEEE 1588, which counts from 1.
namespace Enums::PtpState {

enum Type : int {
    Initializing = 1,
    Faulty = 2,
    Disabled = 3,
    Listening = 4,
    PreMaster = 5,
    Master = 6,
    Passive = 7,
    Uncalibrated = 8,
    Slave = 9,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Initializing, "Initializing"},
    {Faulty, "Faulty"},
    {Disabled, "Disabled"},
    {Listening, "Listening"},
    {PreMaster, "Pre-master"},
    {Master, "Master"},
    {Passive, "Passive"},
    {Uncalibrated, "Uncalibrated"},
    {Slave, "Slave"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::PtpState

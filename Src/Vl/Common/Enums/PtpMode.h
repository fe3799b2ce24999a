#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// Which part a port may take in the election of the PTP master.
namespace Enums::PtpMode {

enum Type : int {
    Off = 0,
    SlaveOnly = 1,
    MasterOnly = 2,
    Automatic = 3,  ///< the best-master algorithm decides
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Off, "Off"},
    {SlaveOnly, "Slave only"},
    {MasterOnly, "Master only"},
    {Automatic, "Automatic"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::PtpMode

#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// Where the system's time of day comes from.
namespace Enums::TimeSource {

enum Type : int {
    Manual = 0,
    Rtc = 1,
    Ntp = 2,
    Ptp = 3,
    TimeCode = 4,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Manual, "Manual"},
    {Rtc, "RTC"},
    {Ntp, "NTP"},
    {Ptp, "PTP"},
    {TimeCode, "Time code"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::TimeSource

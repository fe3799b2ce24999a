#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// The source of time of a PTP grandmaster: timeSource of IEEE 1588-2019.
namespace Enums::PtpRefClockType {

enum Type : int {
    AtomicClock = 0x10,
    Gnss = 0x20,
    TerrestrialRadio = 0x30,
    SerialTimeCode = 0x39,
    Ptp = 0x40,
    Ntp = 0x50,
    HandSet = 0x60,
    Other = 0x90,
    InternalOscillator = 0xA0,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {AtomicClock, "Atomic clock"},
    {Gnss, "GNSS"},
    {TerrestrialRadio, "Terrestrial radio"},
    {SerialTimeCode, "Serial time code"},
    {Ptp, "PTP"},
    {Ntp, "NTP"},
    {HandSet, "Hand set"},
    {Other, "Other"},
    {InternalOscillator, "Internal oscillator"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::PtpRefClockType

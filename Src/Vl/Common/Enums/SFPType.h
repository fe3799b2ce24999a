#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// The kind of transceiver in an SFP cage.
namespace Enums::SFPType {

enum Type : int {
    None = 0,
    FibreTransceiver = 1,
    FibreDualReceiver = 2,
    FibreDualTransmitter = 3,
    FibreReceiver = 4,
    FibreTransmitter = 5,
    CoaxTransceiver = 6,
    CoaxDualReceiver = 7,
    CoaxDualTransmitter = 8,
    HdmiReceiver = 9,
    HdmiTransmitter = 10,
    Ethernet = 11,
    Unsupported = 12,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {None, "None"},
    {FibreTransceiver, "Fibre transceiver"},
    {FibreDualReceiver, "Fibre dual receiver"},
    {FibreDualTransmitter, "Fibre dual transmitter"},
    {FibreReceiver, "Fibre receiver"},
    {FibreTransmitter, "Fibre transmitter"},
    {CoaxTransceiver, "Coax transceiver"},
    {CoaxDualReceiver, "Coax dual receiver"},
    {CoaxDualTransmitter, "Coax dual transmitter"},
    {HdmiReceiver, "HDMI receiver"},
    {HdmiTransmitter, "HDMI transmitter"},
    {Ethernet, "Ethernet"},
    {Unsupported, "Unsupported"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::SFPType

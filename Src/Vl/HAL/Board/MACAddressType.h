#pragma once

namespace Valen::BinaryData {

/// Which of a card's MAC addresses.
enum MACAddressType : int {
    FirstMac = 0,
    SecondMac = 1,
};

}  // namespace Valen::BinaryData

#pragma once

/// The registers that every Ethernet PHY has. Numbers, bits and names: IEEE 802.3, clauses 22.2.4 and 28.2.4.
namespace Valen::HAL::EthernetPhyRegister {

enum Number : int {
    Bmcr = 0,  ///< control
    PhyId1 = 2,
    PhyId2 = 3,
    Anar = 4,  ///< what is offered at 10 and 100 Mbit/s
    Gbcr = 9,  ///< what is offered at 1000 Mbit/s
};

inline constexpr unsigned int kBmcrReset = 1U << 15;
inline constexpr unsigned int kBmcrAutoNegotiation = 1U << 12;
inline constexpr unsigned int kBmcrRestartNegotiation = 1U << 9;
inline constexpr unsigned int kBmcrFullDuplex = 1U << 8;
inline constexpr unsigned int kBmcrSpeed1000 = 1U << 6;

inline constexpr unsigned int kAnarAsymmetricPause = 1U << 11;
inline constexpr unsigned int kAnar100T4 = 1U << 9;
inline constexpr unsigned int kAnar100Full = 1U << 8;
inline constexpr unsigned int kAnar100Half = 1U << 7;
inline constexpr unsigned int kAnar10Full = 1U << 6;
inline constexpr unsigned int kAnar10Half = 1U << 5;
inline constexpr unsigned int kAnarIeee8023 = 1U << 0;  // the protocol that is negotiated

inline constexpr unsigned int kGbcr1000Full = 1U << 9;
inline constexpr unsigned int kGbcr1000Half = 1U << 8;

}  // namespace Valen::HAL::EthernetPhyRegister

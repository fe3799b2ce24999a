#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// How the NMOS registry is found (AMWA IS-04).
namespace Enums::NmosRegistryMode {

enum Type : int {
    Off = 0,
    Static = 1,  ///< the configured address
    UnicastDns = 2,
    MulticastDns = 3,
    PeerToPeer = 4,  ///< no registry
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Off, "Off"},
    {Static, "Static"},
    {UnicastDns, "Unicast DNS-SD"},
    {MulticastDns, "Multicast DNS-SD"},
    {PeerToPeer, "Peer to peer"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::NmosRegistryMode

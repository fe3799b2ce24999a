#pragma once

#include <linux/mii.h>

#include <string>
#include <system_error>

#include "Tools/boardsim/Models/MdioBus.h"

namespace boardsim {

/// A network interface of the processor, as the kernel's driver of it answers the requests of the MII: it
/// hands registers of any PHY on its own management bus through. A PHY that is not there reads as ones.
///
/// | request            | what it does                                                          |
/// |--------------------|-----------------------------------------------------------------------|
/// | SIOCGMIIPHY 0x8947 | tells the address of the interface's own PHY, then as SIOCGMIIREG     |
/// | SIOCGMIIREG 0x8948 | reads a register                                                      |
/// | SIOCSMIIREG 0x8949 | writes a register                                                     |
///
/// Not thread-safe. Source: the kernel's drivers/net/mii.c, generic_mii_ioctl().
class MiiPort {
public:
    /// @param interface its name, "eth0".
    /// @param phy address of its own PHY, 0 to 31.
    /// @param bus outlives this object.
    MiiPort(std::string interface, unsigned phy, MdioBus& bus)
        : interface_(std::move(interface)), phy_(phy), bus_(bus) {}

    const std::string& interface() const { return interface_; }

    /// Of addresses and register numbers the low five bits count.
    /// @return EOPNOTSUPP for other requests.
    std::errc request(unsigned code, mii_ioctl_data& data);

private:
    std::string interface_;
    unsigned phy_;
    MdioBus& bus_;
};

}  // namespace boardsim

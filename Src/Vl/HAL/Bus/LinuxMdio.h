#pragma once

#include "Vl/HAL/Bus/MDIO.h"

struct mii_ioctl_data;

namespace Valen::HAL {

/// A PHY on the management bus of a kernel network interface "eth<number>", reached by the MII requests of
/// its driver (SIOCGMIIPHY, SIOCGMIIREG, SIOCSMIIREG: linux/sockios.h and linux/mii.h).
/// Does not own the socket, which many may share. An access blocks as long as the driver does. Nothing is
/// logged.
class LinuxMdio : public MDIO {
public:
    /// @return a new datagram socket for Init(), closed on exec and owned by the caller; negative on failure.
    static int createSocket();

    /// Until this is called every access fails.
    /// @param socket    any network socket; must stay open while this object is used.
    /// @param interface the number in the interface's name.
    /// @param phy       the PHY's address, 0 to 31.
    void Init(int socket, int interface, int phy);

    bool setReg(int reg, int value) override;
    int getReg(int reg) override;
    void changePhyAddress(int phyAddress) override;

private:
    /// Asks the driver for the access `code` to the stored PHY; the PHY's id in `data` is filled in here.
    bool request(unsigned long code, mii_ioctl_data& data) const;

    int socket_ = -1;
    int interface_ = 0;
    int phyAddress_ = 0;
};

}  // namespace Valen::HAL

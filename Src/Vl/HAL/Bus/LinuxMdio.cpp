#include "Vl/HAL/Bus/LinuxMdio.h"

#include <linux/mii.h>
#include <linux/sockios.h>
#include <net/if.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

#include <cstdint>
#include <cstdio>
#include <cstring>

namespace Valen::HAL {
namespace {

static_assert(sizeof(mii_ioctl_data) <= sizeof(ifreq::ifr_ifru), "the kernel finds it inside the request");

constexpr std::uint16_t word(int value) {
    return static_cast<std::uint16_t>(value);
}

}  // namespace

int LinuxMdio::createSocket() {
    return socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
}

void LinuxMdio::Init(int socket, int interface, int phy) {
    socket_ = socket;
    interface_ = interface;
    phyAddress_ = phy;
}

bool LinuxMdio::setReg(int reg, int value) {
    mii_ioctl_data data{};
    data.reg_num = word(reg);
    data.val_in = word(value);
    return request(SIOCSMIIREG, data);
}

int LinuxMdio::getReg(int reg) {
    mii_ioctl_data data{};
    data.reg_num = word(reg);
    return request(SIOCGMIIREG, data) ? data.val_out : kFailed;
}

void LinuxMdio::changePhyAddress(int phyAddress) {
    phyAddress_ = phyAddress;
}

bool LinuxMdio::request(unsigned long code, mii_ioctl_data& data) const {
    ifreq query{};
    std::snprintf(query.ifr_name, sizeof query.ifr_name, "eth%d", interface_);
    // What it answers, the interface's own PHY, is of no interest; that it answers is.
    if (ioctl(socket_, SIOCGMIIPHY, &query) != 0) {
        return false;
    }
    data.phy_id = word(phyAddress_);
    std::memcpy(&query.ifr_ifru, &data, sizeof data);
    if (ioctl(socket_, code, &query) != 0) {
        return false;
    }
    std::memcpy(&data, &query.ifr_ifru, sizeof data);
    return true;
}

}  // namespace Valen::HAL

#include "Tools/boardsim/Models/MiiPort.h"

#include <linux/sockios.h>

namespace boardsim {
namespace {

constexpr std::uint16_t kAddress = 0x1F;

}  // namespace

std::errc MiiPort::request(unsigned code, mii_ioctl_data& data) {
    data.phy_id &= kAddress;
    data.reg_num &= kAddress;
    if (code == SIOCSMIIREG) {
        bus_.write(data.phy_id, data.reg_num, data.val_in);
        return {};
    }
    if (code == SIOCGMIIPHY) {
        data.phy_id = static_cast<std::uint16_t>(phy_);
    } else if (code != SIOCGMIIREG) {
        return std::errc::operation_not_supported;
    }
    data.val_out = bus_.read(data.phy_id, data.reg_num);
    return {};
}

}  // namespace boardsim

// How the control processor brings up the port for the user's own Ethernet.
#include <chrono>
#include <memory>

#include "Vl/Common/Log/LogInterface.h"
#include "Vl/HAL/Board/CPInterface.h"
#include "Vl/HAL/Bus/Pause.h"
#include "Vl/HAL/Chips/GenericEthernetPhy.h"
#include "Vl/HAL/Fpga/TripleSpeedMac.h"

namespace Valen {
namespace {

constexpr unsigned int kOutOfReset = 3;  // PHY and MAC
constexpr std::chrono::milliseconds kPhyStart(100);

/// 20:1C:23:17:4A:CB, first byte lowest; the high word's upper half is no address.
constexpr unsigned int kMacHigh = 0x0001CB4A;
constexpr unsigned int kMacLow = 0x17231C20;

}  // namespace

bool CPInterface::initUserEth(unsigned long ctrl, unsigned long base, bool jumbo,
                              std::shared_ptr<HAL::GenericEthernetPhy>& phy, bool extra) {
    VL_LOG(CPCardInterface, DEBUG, "ethernet core set up at %08lX / %08lX", ctrl, base);
    writeFPGA(static_cast<unsigned int>(ctrl), kOutOfReset);
    HAL::pauseFor(kPhyStart);
    if (!phy || !phy->initUserEth()) {
        VL_LOG(CPCardInterface, DEBUG, "could not init ethernet phy");
        return false;
    }
    const auto mac = static_cast<unsigned int>(base);
    if (!HAL::tseMacReset(*this, mac)) {
        return false;
    }
    HAL::tseMacConfigure(*this, mac, kMacHigh, kMacLow, jumbo, extra);
    return true;
}

void CPInterface::setUserEthMACSpeed(unsigned long /*base*/, EthSpeed /*speed*/) {}

}  // namespace Valen

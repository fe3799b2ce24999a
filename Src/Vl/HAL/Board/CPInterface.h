#pragma once

#include <cstdint>
#include <memory>
#include <utility>

#include "Vl/HAL/Board/TimestampInterface.h"
#include "Vl/HAL/Bus/GPIO.h"
#include "Vl/HAL/Fpga/FPGAInterface.h"

namespace Valen {

class OledPanelInterface;

namespace HAL {
class GenericEthernetPhy;
}

/// The board's root object on the control processor: the main FPGA's register space, the GPIO device, and
/// what the board variants build on them. Built by a variant, one per process, and then reachable from
/// anywhere through getInstance().
///
/// Missing hardware is no error at construction: what needs it fails later. Nothing throws. Register accesses
/// are single volatile 32-bit loads and stores without a lock. Offsets are byte offsets into the FPGA's
/// register space; their low two bits are ignored.
class CPInterface : public TimestampInterface {
public:
    /// The speed of the user port's MAC, in Mbit/s; any other value stands for 100, too.
    enum class EthSpeed : int {
        Mbit10 = 1,
        Mbit100 = 2,
        Mbit1000 = 3,
    };

    CPInterface(const CPInterface&) = delete;
    CPInterface& operator=(const CPInterface&) = delete;
    ~CPInterface() override;

    /// @return the word that the sync block shows as timestamp; 0 without a sync block.
    unsigned int getTimestamp() override;
    /// @return how many OLED panels the board has; 0 unless a variant knows better.
    virtual int getOledPanelCount() const;
    /// @return a new panel, owned by the caller, who checks initOk(); empty for a board without panels.
    virtual std::unique_ptr<OledPanelInterface> getOledPanel(int index);

    /// @return the object built last, or null when there is none.
    static CPInterface* getInstance() { return globalCPInterface; }

    /// Reads or writes one register. @return false when it does not exist: nothing mapped, or beyond its end.
    bool readFPGA(unsigned int offset, unsigned int& value);
    bool writeFPGA(unsigned int offset, unsigned int value);

    /// Reads or writes `count` registers from `offset` upward, one access each. `buf` needs no alignment.
    /// Registers that do not exist are passed over. @return always true.
    bool readFPGA(unsigned int offset, void* buf, unsigned int count);
    bool writeFPGA(unsigned int offset, const void* buf, unsigned int count);

    /// Finds word n of an FPGA core as an address; 1 is "the" address. A negative bound admits any version.
    /// @return 1, or the negative results of HAL::getPldCoreAddress, which clears the low six bits of
    ///         `address` even then.
    int getCoreAddress(const char* name, unsigned int& address, int n, int minVersion, int maxVersion);
    int getCoreAddress(const char* name, unsigned int& address, int n, int version);

    /// Finds the registers of an FPGA core's span i (0 is the first).
    /// @return the span's first register and the core's version; both zero when the core is not found or its
    ///         registers do not exist. The pointer is valid until the process ends.
    std::pair<volatile std::uint32_t*, unsigned int> getCoreRegs(const char* name, int i);

    /// Brings up the port for the user's own Ethernet: takes it out of reset, waits 100 ms, then sets up the
    /// PHY and after it the MAC. Blocks; both log and fail as HAL::GenericEthernetPhy and HAL::tseMacReset
    /// do.
    /// @param ctrl  offset of the port's reset register.
    /// @param base  offset of the MAC core's registers.
    /// @param jumbo, extra as for HAL::tseMacConfigure.
    /// @return false when the PHY (or a missing one) or the MAC fails; what comes after is left undone.
    bool initUserEth(unsigned long ctrl, unsigned long base, bool jumbo,
                     std::shared_ptr<HAL::GenericEthernetPhy>& phy, bool extra);
    /// Does nothing: this board's MAC keeps its speed.
    void setUserEthMACSpeed(unsigned long base, EthSpeed speed);

protected:
    CPInterface();

private:
    static CPInterface* globalCPInterface;

    HAL::FPGAInterface fpga_;
    HAL::GPIO gpio_;
};

}  // namespace Valen

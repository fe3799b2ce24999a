#pragma once

#include <array>
#include <cstddef>
#include <memory>

#include "Vl/Common/Files/Descriptor.h"

struct ifreq;

namespace Valen {

struct JenkinsChecksum;

namespace HAL {
class MDIO;
}

/// The card's network links as the control processor sees them: the carrier of the Ethernet ports eth0 and
/// eth1, the in-band management link "inbd", the test-pattern interface "pattern", and PHYs that hang off
/// network interfaces. Built by who needs it, once per process, and then reachable through getInstance().
///
/// Holds descriptors only and takes no lock; any thread may ask. Interfaces that do not exist are no error at
/// construction: what needs them fails later. Nothing throws. "inbd" and "pattern" understand requests of
/// their own (SIOCDEVPRIVATE and up, linux/sockios.h), whose argument is the first word behind the name.
class CPLinkInterface {
public:
    /// What EthLinkState() answers.
    enum LinkState : int {
        NoCarrier = 0,
        InbandSlave = 1,  ///< carries the in-band link
        CarrierOnly = 2,
    };

    /// Whether a lane sends the pattern; every number but 0 means yes.
    enum PATTERN_ENABLE : int {
        PATTERN_OFF = 0,
        PATTERN_ON = 1,
    };

    /// What sendPattern() answers.
    enum PatternResult : int {
        PatternSent = 1,
        PatternFailed = 0,
        PatternNoSocket = -7,
        PatternNoFile = -8,
    };

    /// Opens the carrier files, which stay open. A missing socket is told on standard error, nothing else.
    CPLinkInterface();
    CPLinkInterface(const CPLinkInterface&) = delete;
    CPLinkInterface& operator=(const CPLinkInterface&) = delete;
    ~CPLinkInterface();

    /// @return the object built last, or null when there is none.
    static CPLinkInterface* getInstance() { return globalLinkInterface; }

    /// @return whether port 0 or 1 has a carrier; false also when that cannot be told, and for other ports.
    bool isCarrierUp(int port);
    /// @return a LinkState. The in-band link is not looked at while the port has no carrier.
    int EthLinkState(int port);

    /// Issues a request.
    /// @param request what lies behind the name is the caller's, both ways; the name is filled in here.
    /// @param inband  on "inbd", with `port` as argument unless negative; otherwise on "eth<port>".
    /// @return ioctl(2)'s result, -1 with errno set on failure.
    int SIOC(ifreq& request, int code, int port, bool inband);
    /// @return SIOC()'s result.
    int InbandEmergencyShutdown();
    /// Switches a lane of the test-pattern interface to or from the pattern. @return false, logged, when it
    /// refuses.
    bool EnablePatternOnLane(PATTERN_ENABLE enable, int lane);
    /// @return the length of the fibre at a port, in the unit of its driver; negative when it does not tell.
    int getFiberLength(int port);

    /// @return a new accessor for the PHY `phy` on the management bus of "eth<interface>". It uses this
    ///         object's socket and must not be used when this object is gone.
    std::shared_ptr<HAL::MDIO> getEthMDIO(int interface, int phy);

    /// Sends a pattern file (see PatternFile) over "pattern" as raw frames of 1024 bytes, one every 10 ms,
    /// and makes sure by the interface's own counter that all of it went out; other traffic meanwhile makes
    /// that fail. Blocks for the time that takes, and 100 ms more.
    /// @param checksum is fed with the words of every frame, the header's too.
    /// @param corrupt  alters one bit, so that the receiver has an error to find.
    /// @return a PatternResult; what went wrong is logged.
    int sendPattern(const char* file, JenkinsChecksum& checksum, bool corrupt);

private:
    static constexpr std::size_t kPorts = 2;

    static CPLinkInterface* globalLinkInterface;

    Descriptor socket_;  // a handle for requests; nothing is sent through it
    std::array<Descriptor, kPorts> carriers_;
};

}  // namespace Valen

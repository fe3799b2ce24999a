#include "Vl/HAL/Board/CPLinkInterface.h"

#include <fcntl.h>
#include <linux/sockios.h>
#include <net/if.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdio>
#include <span>
#include <string>
#include <utility>

#include "Vl/Common/Files/Errno.h"
#include "Vl/Common/Files/ExactIO.h"
#include "Vl/Common/Log/LogInterface.h"
#include "Vl/HAL/Bus/LinuxMdio.h"

namespace Valen {
namespace {

constexpr const char* kInbandName = "inbd";
constexpr const char* kPatternName = "pattern";

/// Requests of these interfaces' drivers.
enum Request : int {
    PatternOn = SIOCDEVPRIVATE,  // to "pattern", with the lane
    PatternOff = SIOCDEVPRIVATE + 1,
    EmergencyShutdown = SIOCDEVPRIVATE + 3,  // to "inbd"
    FiberLength = SIOCDEVPRIVATE + 6,        // to "inbd", with the port
};

constexpr int kNoArgument = -1;

void setName(ifreq& request, const char* name) {
    std::snprintf(request.ifr_name, sizeof request.ifr_name, "%s", name);
}

void setArgument(ifreq& request, int argument) {
    request.ifr_ifru.ifru_ivalue = argument;
}

int issue(const Descriptor& socket, int code, ifreq& request) {
    return ioctl(socket.get(), static_cast<unsigned long>(code), &request);
}

}  // namespace

CPLinkInterface* CPLinkInterface::globalLinkInterface = nullptr;

CPLinkInterface::CPLinkInterface() : socket_(HAL::LinuxMdio::createSocket()) {
    if (!socket_.isValid()) {
        perror("socket");
    }
    for (std::size_t port = 0; port < kPorts; ++port) {
        const std::string path = "/sys/class/net/eth" + std::to_string(port) + "/carrier";
        carriers_[port] = Descriptor::open(path.c_str(), O_RDONLY);
    }
    globalLinkInterface = this;
}

CPLinkInterface::~CPLinkInterface() {
    if (globalLinkInterface == this) {
        globalLinkInterface = nullptr;
    }
}

bool CPLinkInterface::isCarrierUp(int port) {
    if (port < 0 || std::cmp_greater_equal(port, kPorts)) {
        return false;
    }
    char state = '0';
    // By position: other threads may ask at the same time.
    return pread(carriers_[static_cast<std::size_t>(port)].get(), &state, sizeof state, 0) == sizeof state &&
           state == '1';
}

int CPLinkInterface::EthLinkState(int port) {
    if (!isCarrierUp(port)) {
        return NoCarrier;
    }
    const Descriptor slave = Descriptor::open("/sys/kernel/inband/slave_if", O_RDONLY);
    std::array<std::byte, 4> name{};
    return readExact(slave.get(), name) > 0 ? InbandSlave : CarrierOnly;
}

int CPLinkInterface::SIOC(ifreq& request, int code, int port, bool inband) {
    if (!inband) {
        setName(request, ("eth" + std::to_string(port)).c_str());
        return issue(socket_, code, request);
    }
    setName(request, kInbandName);
    if (port >= 0) {
        setArgument(request, port);
    }
    return issue(socket_, code, request);
}

int CPLinkInterface::InbandEmergencyShutdown() {
    ifreq request{};
    return SIOC(request, EmergencyShutdown, kNoArgument, true);
}

bool CPLinkInterface::EnablePatternOnLane(PATTERN_ENABLE enable, int lane) {
    ifreq request{};
    setName(request, kPatternName);
    setArgument(request, lane);
    if (issue(socket_, enable != PATTERN_OFF ? PatternOn : PatternOff, request) < 0) {
        VL_LOG(Firmware, DEBUG, "Unable to do ioctl: %s", errnoText());
        return false;
    }
    return true;
}

int CPLinkInterface::getFiberLength(int port) {
    ifreq request{};
    return SIOC(request, FiberLength, port, true);
}

std::shared_ptr<HAL::MDIO> CPLinkInterface::getEthMDIO(int interface, int phy) {
    auto mdio = std::make_shared<HAL::LinuxMdio>();
    mdio->Init(socket_.get(), interface, phy);
    return mdio;
}

}  // namespace Valen

// What CPLinkInterface asks the drivers of network interfaces.
#include <net/if.h>
#include <sys/socket.h>

#include <cerrno>
#include <cstring>
#include <memory>

#include "Tests/HAL/Board/LinkCalls.h"
#include "Tests/HAL/BoardWorld.h"
#include "Vl/HAL/Board/CPLinkInterface.h"
#include "Vl/HAL/Bus/MDIO.h"

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using Valen::CPLinkInterface;

// linux/sockios.h and the drivers of "pattern" and "inbd"
constexpr unsigned long kGetPhy = 0x8947;
constexpr unsigned long kGetRegister = 0x8948;
constexpr unsigned long kPatternOn = 0x89F0;
constexpr unsigned long kPatternOff = 0x89F1;
constexpr unsigned long kShutdown = 0x89F3;
constexpr unsigned long kFiberLength = 0x89F6;

class LinkRequestsTest : public BoardWorld {
protected:
    LinkRequestsTest() { logEverything(); }

    CPLinkInterface link;
    LinkCalls drivers;
};

TEST_F(LinkRequestsTest, TheEmergencyShutdownHasNoArgument) {
    drivers.answer = 5;
    EXPECT_EQ(5, link.InbandEmergencyShutdown());
    EXPECT_THAT(drivers.calls, ElementsAre(LinkCall{kShutdown, "inbd", 0}));
    drivers.answer = -EPERM;
    EXPECT_EQ(-1, link.InbandEmergencyShutdown());
}

TEST_F(LinkRequestsTest, TheFiberLengthIsTheDriversResult) {
    drivers.answer = 1234;
    EXPECT_EQ(1234, link.getFiberLength(3));
    EXPECT_EQ(1234, link.getFiberLength(0));
    drivers.answer = -ENODEV;
    EXPECT_EQ(-1, link.getFiberLength(2147483647));
    EXPECT_THAT(drivers.calls,
                ElementsAre(LinkCall{kFiberLength, "inbd", 3}, LinkCall{kFiberLength, "inbd", 0},
                            LinkCall{kFiberLength, "inbd", 2147483647}));
}

TEST_F(LinkRequestsTest, ANegativePortIsNoArgument) {
    link.getFiberLength(-1);
    link.getFiberLength(-2147483647 - 1);
    EXPECT_THAT(drivers.calls, Each(LinkCall{kFiberLength, "inbd", 0}));
}

TEST_F(LinkRequestsTest, LanesAreSwitchedToThePatternAndBack) {
    constexpr CPLinkInterface::PATTERN_ENABLE kAnotherYes{2};
    EXPECT_TRUE(link.EnablePatternOnLane(CPLinkInterface::PATTERN_ON, 0));
    EXPECT_TRUE(link.EnablePatternOnLane(CPLinkInterface::PATTERN_OFF, 7));
    EXPECT_TRUE(link.EnablePatternOnLane(kAnotherYes, 2));
    EXPECT_THAT(drivers.calls,
                ElementsAre(LinkCall{kPatternOn, "pattern", 0}, LinkCall{kPatternOff, "pattern", 7},
                            LinkCall{kPatternOn, "pattern", 2}));
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

TEST_F(LinkRequestsTest, ALaneThatCannotBeSwitchedIsLoggedForDebugging) {
    drivers.answer = -ENODEV;
    EXPECT_FALSE(link.EnablePatternOnLane(CPLinkInterface::PATTERN_ON, 1));
    drivers.answer = -EOPNOTSUPP;
    EXPECT_FALSE(link.EnablePatternOnLane(CPLinkInterface::PATTERN_OFF, 1));
    EXPECT_THAT(syslog.lines(), ElementsAre(debug("Firmware: Unable to do ioctl: No such device"),
                                            debug("Firmware: Unable to do ioctl: Operation not supported")));
    logUpTo(Valen::Log::SeverityLevel::SERVICE);
    EXPECT_FALSE(link.EnablePatternOnLane(CPLinkInterface::PATTERN_ON, 1));
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

TEST_F(LinkRequestsTest, ARequestToAPortNamesItAndLeavesTheArgumentToTheCaller) {
    for (const int port : {0, 1, 42, 2147483647, -1}) {
        drivers.calls.clear();
        drivers.left = 4711;
        ifreq request{};
        std::memset(&request, 0xFF, sizeof request);
        EXPECT_EQ(0, link.SIOC(request, 0x89F7, port, false));
        EXPECT_THAT(drivers.calls, ElementsAre(LinkCall{0x89F7, "eth" + std::to_string(port), -1, false}));
        EXPECT_EQ(4711, request.ifr_ifru.ifru_ivalue);
    }
}

TEST_F(LinkRequestsTest, ARequestToTheInbandLinkTakesThePortAsArgument) {
    ifreq request{};
    request.ifr_ifru.ifru_ivalue = 99;
    drivers.left = 17;
    drivers.answer = 3;
    EXPECT_EQ(3, link.SIOC(request, 0x89F8, 6, true));
    EXPECT_EQ(17, request.ifr_ifru.ifru_ivalue);
    link.SIOC(request, 0x89F8, -1, true);
    EXPECT_THAT(drivers.calls, ElementsAre(LinkCall{0x89F8, "inbd", 6}, LinkCall{0x89F8, "inbd", 17}));
}

TEST_F(LinkRequestsTest, ARefusedRequestTellsWhy) {
    drivers.answer = -EOPNOTSUPP;
    ifreq request{};
    errno = 0;
    EXPECT_EQ(-1, link.SIOC(request, 0x89F0, 0, false));
    EXPECT_EQ(EOPNOTSUPP, errno);
}

TEST_F(LinkRequestsTest, PhysAreReachedThroughTheSameSocket) {
    const std::shared_ptr<Valen::HAL::MDIO> mdio = link.getEthMDIO(3, 9);
    ASSERT_TRUE(mdio);
    EXPECT_EQ(0, mdio->getReg(2));
    link.InbandEmergencyShutdown();
    ASSERT_EQ(3U, drivers.calls.size());
    EXPECT_EQ((LinkCall{kGetPhy, "eth3", 0}), drivers.calls[0]);
    EXPECT_EQ(kGetRegister, drivers.calls[1].code);
    EXPECT_EQ("eth3", drivers.calls[1].interface);
    EXPECT_EQ(2 << 16 | 9, drivers.calls[1].argument);  // of the low half and the high half
    EXPECT_THAT(drivers.descriptors, Each(drivers.descriptors.front()));
}

TEST_F(LinkRequestsTest, EveryPhyAccessorIsANewOne) {
    EXPECT_NE(link.getEthMDIO(0, 0), link.getEthMDIO(0, 0));
}

TEST_F(LinkRequestsTest, TheSocketIsAnInternetDatagramSocket) {
    link.InbandEmergencyShutdown();
    ASSERT_EQ(1U, drivers.descriptors.size());
    int domain = 0;
    int type = 0;
    socklen_t size = sizeof domain;
    ASSERT_EQ(0, getsockopt(drivers.descriptors[0], SOL_SOCKET, SO_DOMAIN, &domain, &size));
    ASSERT_EQ(0, getsockopt(drivers.descriptors[0], SOL_SOCKET, SO_TYPE, &type, &size));
    EXPECT_EQ(AF_INET, domain);
    EXPECT_EQ(SOCK_DGRAM, type);
}

}  // namespace

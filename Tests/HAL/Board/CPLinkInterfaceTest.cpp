#include "Vl/HAL/Board/CPLinkInterface.h"

#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <memory>
#include <thread>
#include <vector>

#include "Tests/HAL/BoardWorld.h"
#include "Tests/Support/PrivateNetwork.h"
#include "Tools/boardsim/Host/Mounts.h"

namespace {

using support::PrivateNetwork;
using support::PrivateWorld;
using Valen::CPLinkInterface;

constexpr const char* kSlaveFile = "/sys/kernel/inband/slave_if";

class CPLinkInterfaceTest : public BoardWorld {
protected:
    CPLinkInterfaceTest() { boardsim::coverDirectory("/sys/kernel", boardsim::keepNothing); }
    ~CPLinkInterfaceTest() override { umount2("/sys/kernel", MNT_DETACH); }

    static void makeInterface(const std::string& name) { PrivateNetwork::makePair(name, name + "-far"); }

    /// Its carrier follows the far end.
    static void switchCarrier(const std::string& name, bool up) {
        PrivateNetwork::ip("link set " + name + "-far " + (up ? "up" : "down"));
    }

    static std::vector<int> openDescriptors() {
        std::vector<int> numbers;
        for (int number = 0; number < 1024; ++number) {
            if (fcntl(number, F_GETFD) >= 0) {
                numbers.push_back(number);
            }
        }
        return numbers;
    }

    PrivateNetwork network;
};

TEST_F(CPLinkInterfaceTest, TheObjectBuiltLastIsTheInstanceUntilItIsGone) {
    EXPECT_EQ(nullptr, CPLinkInterface::getInstance());
    auto first = std::make_unique<CPLinkInterface>();
    EXPECT_EQ(first.get(), CPLinkInterface::getInstance());
    {
        CPLinkInterface second;
        EXPECT_EQ(&second, CPLinkInterface::getInstance());
        first.reset();
        EXPECT_EQ(&second, CPLinkInterface::getInstance());
    }
    EXPECT_EQ(nullptr, CPLinkInterface::getInstance());
}

TEST_F(CPLinkInterfaceTest, ItHoldsThreeDescriptorsClosedOnExecAndClosesThem) {
    makeInterface("eth0");
    makeInterface("eth1");
    const std::vector<int> before = openDescriptors();
    {
        CPLinkInterface link;
        const std::vector<int> during = openDescriptors();
        EXPECT_EQ(before.size() + 3, during.size());
        for (const int number : during) {
            if (std::find(before.begin(), before.end(), number) == before.end()) {
                EXPECT_EQ(FD_CLOEXEC, fcntl(number, F_GETFD)) << number;
            }
        }
    }
    EXPECT_EQ(before, openDescriptors());
}

TEST_F(CPLinkInterfaceTest, CarriersAreAskedForEveryTime) {
    makeInterface("eth0");
    makeInterface("eth1");
    CPLinkInterface link;
    switchCarrier("eth1", false);
    EXPECT_TRUE(link.isCarrierUp(0));
    EXPECT_FALSE(link.isCarrierUp(1));
    switchCarrier("eth0", false);
    switchCarrier("eth1", true);
    EXPECT_FALSE(link.isCarrierUp(0));
    EXPECT_TRUE(link.isCarrierUp(1));
}

TEST_F(CPLinkInterfaceTest, AnInterfaceThatIsDownHasNoCarrier) {
    makeInterface("eth0");
    CPLinkInterface link;
    PrivateNetwork::ip("link set eth0 down");
    EXPECT_FALSE(link.isCarrierUp(0));
    PrivateNetwork::ip("link set eth0 up");
    EXPECT_TRUE(link.isCarrierUp(0));
}

TEST_F(CPLinkInterfaceTest, CarrierFilesAreOpenedOnce) {
    makeInterface("eth1");
    CPLinkInterface link;
    makeInterface("eth0");  // too late
    EXPECT_FALSE(link.isCarrierUp(0));
    PrivateNetwork::ip("link del eth1");
    makeInterface("eth1");  // another one
    EXPECT_FALSE(link.isCarrierUp(1));
}

TEST_F(CPLinkInterfaceTest, OtherPortsHaveNoCarrier) {
    makeInterface("eth0");
    makeInterface("eth1");
    makeInterface("eth2");
    CPLinkInterface link;
    for (const int port : {-2147483647 - 1, -1, 2, 3, 2147483647}) {
        EXPECT_FALSE(link.isCarrierUp(port)) << port;
        EXPECT_EQ(0, link.EthLinkState(port)) << port;
    }
}

TEST_F(CPLinkInterfaceTest, AnyThreadMayAskAtTheSameTime) {
    makeInterface("eth0");
    makeInterface("eth1");
    CPLinkInterface link;
    std::array<int, 4> up{};
    std::vector<std::thread> threads;
    for (int& count : up) {
        threads.emplace_back([&] {
            for (int i = 0; i < 2000; ++i) {
                count += link.isCarrierUp(i % 2) ? 1 : 0;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ((std::array{2000, 2000, 2000, 2000}), up);
}

TEST_F(CPLinkInterfaceTest, APortWithCarrierCarriesTheInbandLinkWhenASlaveIsNamed) {
    makeInterface("eth1");
    CPLinkInterface link;
    for (const char* contents : {"eth1\n", "e", "\n", "a long name of an interface"}) {
        PrivateWorld::write(kSlaveFile, contents);
        EXPECT_EQ(1, link.EthLinkState(1)) << contents;
    }
}

TEST_F(CPLinkInterfaceTest, APortWithCarrierIsJustUpWhenNoSlaveIsNamed) {
    makeInterface("eth1");
    CPLinkInterface link;
    EXPECT_EQ(2, link.EthLinkState(1)) << "no file";
    PrivateWorld::write(kSlaveFile, "");
    EXPECT_EQ(2, link.EthLinkState(1)) << "an empty file";
    std::filesystem::remove(kSlaveFile);
    PrivateWorld::makeDirectory(kSlaveFile);
    EXPECT_EQ(2, link.EthLinkState(1)) << "a file that cannot be read";
}

TEST_F(CPLinkInterfaceTest, AskingForALinkStateLeavesNoDescriptorOpen) {
    makeInterface("eth0");
    PrivateWorld::write(kSlaveFile, "eth0\n");
    CPLinkInterface link;
    const std::vector<int> before = openDescriptors();
    EXPECT_EQ(1, link.EthLinkState(0));
    EXPECT_EQ(before, openDescriptors());
}

TEST_F(CPLinkInterfaceTest, APortWithoutCarrierIsDownAndTheInbandFileIsNotTouched) {
    makeInterface("eth0");
    makeInterface("eth1");
    switchCarrier("eth0", false);
    PrivateWorld::write(kSlaveFile, "eth0\n");
    CPLinkInterface link;
    const Valen::Descriptor watch(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    ASSERT_GE(inotify_add_watch(watch.get(), kSlaveFile, IN_ALL_EVENTS), 0);
    std::array<char, 4096> events{};
    EXPECT_EQ(0, link.EthLinkState(0));
    EXPECT_EQ(-1, read(watch.get(), events.data(), events.size()));
    EXPECT_EQ(1, link.EthLinkState(1));
    EXPECT_GT(read(watch.get(), events.data(), events.size()), 0) << "the watch works";
}

TEST_F(CPLinkInterfaceTest, WithoutDescriptorsItSaysSoAndEverythingFails) {
    makeInterface("eth0");
    rlimit limit{};
    ASSERT_EQ(0, getrlimit(RLIMIT_NOFILE, &limit));
    testing::internal::CaptureStderr();
    const int next = Valen::Descriptor::open("/dev/null", O_RDONLY).get();
    const rlimit tight{static_cast<rlim_t>(next), limit.rlim_max};
    ASSERT_EQ(0, setrlimit(RLIMIT_NOFILE, &tight));
    CPLinkInterface link;
    ASSERT_EQ(0, setrlimit(RLIMIT_NOFILE, &limit));
    EXPECT_EQ("socket: Too many open files\n", testing::internal::GetCapturedStderr());
    EXPECT_FALSE(link.isCarrierUp(0));
    EXPECT_EQ(0, link.EthLinkState(0));
    EXPECT_EQ(-1, link.InbandEmergencyShutdown());
    EXPECT_EQ(-1, link.getFiberLength(0));
    EXPECT_FALSE(link.EnablePatternOnLane(CPLinkInterface::PATTERN_ON, 0));
}

}  // namespace

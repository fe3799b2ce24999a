#include "Tests/Support/PrivateNetwork.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <system_error>
#include <thread>

#include "Tools/boardsim/Host/Mounts.h"

namespace support {
namespace {

constexpr const char* kThisThreads = "/proc/thread-self/ns/net";
constexpr const char* kAside = "/tmp/sysfs-of-the-private-network";

void check(int result, const char* what) {
    if (result != 0) {
        throw std::system_error(errno, std::generic_category(), what);
    }
}

/// Where the kernel knows no IPv6 there is no such file.
void switchOffIpv6() {
    std::ofstream("/proc/sys/net/ipv6/conf/all/disable_ipv6") << '1';
    std::ofstream("/proc/sys/net/ipv6/conf/default/disable_ipv6") << '1';
}

/// The kernel does not connect an interface's queue before some time after its carrier has come, and drops
/// what is sent until then.
void waitUntilItSends(const std::string& interface) {
    std::string state;
    while (std::ifstream("/sys/class/net/" + interface + "/operstate") >> state && state != "up") {
        std::this_thread::yield();
    }
    // The state is told a little earlier than the queue is there, but under one lock, for which this waits.
    PrivateNetwork::ip("link set " + interface + " up");
}

}  // namespace

PrivateNetwork::PrivateNetwork() : machines_(Valen::Descriptor::open(kThisThreads, O_RDONLY)) {
    check(unshare(CLONE_NEWNET), "cannot make a private network");
    switchOffIpv6();
    // A sysfs shows the network of whoever mounts it. Its links in class/net lead to devices.
    std::filesystem::create_directories(kAside);
    check(mount("sysfs", kAside, "sysfs", MS_NOSUID, nullptr), "cannot mount sysfs");
    for (const char* part : {"/devices", "/class/net"}) {
        const std::string target = std::string("/sys") + part;
        boardsim::bindPath(kAside + std::string(part), target);
        covered_.push_back(target);
    }
    check(umount2(kAside, MNT_DETACH), "cannot hide sysfs");
}

PrivateNetwork::~PrivateNetwork() {
    for (const std::string& target : covered_) {
        umount2(target.c_str(), MNT_DETACH);
    }
    if (setns(machines_.get(), CLONE_NEWNET) != 0) {
        EXPECT_EQ(0, unshare(CLONE_NEWNET));  // an ordinary user's way back is closed
    }
}

void PrivateNetwork::makePair(const std::string& name, const std::string& farEnd) {
    ip("link add " + name + " up type veth peer name " + farEnd);
    ip("link set " + farEnd + " up");
    waitUntilItSends(name);
    waitUntilItSends(farEnd);
}

void PrivateNetwork::ip(const std::string& words) {
    const std::string command = "/sbin/ip " + words;
    ASSERT_EQ(0, std::system(command.c_str())) << command;  // NOLINT: a test's own words
}

}  // namespace support

#include "Tools/boardsim/Host/Network.h"

#include <fcntl.h>
#include <linux/if_link.h>
#include <linux/rtnetlink.h>
#include <linux/veth.h>
#include <net/if.h>
#include <sched.h>
#include <sys/mount.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <stdexcept>

#include "Tools/boardsim/Host/Mounts.h"
#include "Tools/boardsim/Host/SystemError.h"

namespace boardsim {
namespace {

namespace fs = std::filesystem;

/// It greets everybody on each wire it finds, which interfaces count. Kernels may lack it, and containers
/// forbid to change it: there it stays.
void switchIpv6Off() {
    const Descriptor file(open("/proc/sys/net/ipv6/conf/all/disable_ipv6", O_WRONLY | O_CLOEXEC));
    if (file && write(file.get(), "1", 1) < 0) {
        return;
    }
}

ifinfomsg link(bool isUp) {
    ifinfomsg record{};
    record.ifi_family = AF_UNSPEC;
    record.ifi_flags = isUp ? IFF_UP : 0;
    record.ifi_change = IFF_UP;
    return record;
}

/// Both ends of a wire at once, the other one in the namespace `peers`, and down: the kernel cannot make it
/// up before the wire is there.
void makeWire(NetlinkSocket& board, const NetworkInterface& interface, int peers) {
    NetlinkMessage message(RTM_NEWLINK, NLM_F_CREATE | NLM_F_EXCL);
    message.add(link(true));
    message.addText(IFLA_IFNAME, interface.name);
    const std::size_t info = message.begin(IFLA_LINKINFO);
    message.addText(IFLA_INFO_KIND, "veth");
    const std::size_t data = message.begin(IFLA_INFO_DATA);
    const std::size_t peer = message.begin(VETH_INFO_PEER);
    message.add(link(false));
    message.addText(IFLA_IFNAME, interface.name);
    message.addNumber(IFLA_NET_NS_FD, static_cast<std::uint32_t>(peers));
    message.end(peer);
    message.end(data);
    message.end(info);
    board.request(std::move(message), "cannot make the network interface " + interface.name);
}

void setUp(NetlinkSocket& network, const std::string& interface, bool isUp) {
    NetlinkMessage message(RTM_NEWLINK, 0);
    message.add(link(isUp));
    message.addText(IFLA_IFNAME, interface);
    network.request(std::move(message), "cannot change the network interface " + interface);
}

[[noreturn]] void refuseSysfs() {
    throw std::runtime_error(
        std::string("cannot show the board's network interfaces: ") + std::strerror(errno) +
        ".\nIn a container, run it with --cap-add SYS_ADMIN --security-opt systempaths=unconfined; or leave "
        "them out with: --without network --without inband --without pattern.");
}

}  // namespace

void makeNetwork(const std::vector<NetworkInterface>& interfaces, ControlChannel& host) {
    NetlinkSocket peerSocket;
    const Descriptor peers(open("/proc/self/ns/net", O_RDONLY | O_CLOEXEC));
    switchIpv6Off();
    if (!peers || unshare(CLONE_NEWNET) != 0) {
        throw systemError("cannot make a private network");
    }
    switchIpv6Off();
    NetlinkSocket board;
    setUp(board, "lo", true);
    for (const NetworkInterface& interface : interfaces) {
        makeWire(board, interface, peers.get());
        if (interface.hasCarrier) {
            setUp(peerSocket, interface.name, true);
        }
    }
    host.send(ControlKind::PeerNetwork, 0, {}, peerSocket.descriptor());
}

void showNetwork(const std::string& aside) {
    // Made new, it shows the network of who makes it. Read-only, because an ordinary user may not have it in
    // another way where the machine's is.
    fs::create_directories(aside);
    if (mount("sysfs", aside.c_str(), "sysfs", MS_RDONLY | MS_NOSUID | MS_NODEV | MS_NOEXEC, nullptr) != 0) {
        refuseSysfs();
    }
    bindPath(aside + "/class/net", "/sys/class/net");
    bindPath(aside + "/devices/virtual/net", "/sys/devices/virtual/net");
    if (umount2(aside.c_str(), MNT_DETACH) != 0) {
        throw systemError("cannot hide " + aside);
    }
    fs::remove(aside);
}

void PeerNetwork::setCarrier(const std::string& interface, bool isThere) {
    setUp(socket_, interface, isThere);
}

}  // namespace boardsim

#include "Tests/HAL/Board/PatternWorld.h"

#include <linux/if_packet.h>
#include <net/ethernet.h>
#include <net/if.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <array>
#include <cstring>
#include <fstream>

using support::PrivateNetwork;
using support::PrivateWorld;
using Valen::Descriptor;

namespace {

constexpr std::size_t kFrame = 1024;
constexpr std::size_t kHeader = 12;

sockaddr_ll addressOf(const char* interface) {
    sockaddr_ll address{};
    address.sll_family = AF_PACKET;
    address.sll_protocol = htons(ETH_P_ALL);
    address.sll_ifindex = static_cast<int>(if_nametoindex(interface));
    return address;
}

Descriptor receiver(const char* interface) {
    Descriptor socket(::socket(AF_PACKET, SOCK_RAW | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    const sockaddr_ll address = addressOf(interface);
    EXPECT_EQ(0, bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address));
    return socket;
}

}  // namespace

PatternWorld::PatternWorld() {
    PrivateNetwork::makePair("pattern", "wire");
    farEnd_ = receiver("wire");
    logEverything();
}

std::string PatternWorld::patternOf(std::size_t size, std::uint32_t words) {
    std::string bytes;
    for (std::size_t i = 0; i < size; ++i) {
        bytes += static_cast<char>(0x11 + i * 7 + i / 256 * 13);
    }
    char length[sizeof words];
    std::memcpy(length, &words, sizeof words);
    for (std::size_t i = 0; i < sizeof words && i + 8 < size; ++i) {
        bytes[8 + i] = length[i];
    }
    return bytes;
}

std::string PatternWorld::patternOf(std::size_t size) {
    return patternOf(size, static_cast<std::uint32_t>((size - kHeader) / 4));
}

std::vector<std::string> PatternWorld::framesOf(const std::string& bytes) {
    std::vector<std::string> frames;
    for (std::size_t start = 0; start < bytes.size(); start += kFrame) {
        frames.push_back(bytes.substr(start, kFrame));
    }
    return frames;
}

int PatternWorld::send(const std::string& bytes, bool corrupt) {
    PrivateWorld::write(kFile, bytes);
    return link.sendPattern(kFile, checksum, corrupt);
}

void PatternWorld::sendOther(std::size_t size) {
    const Descriptor socket(::socket(AF_PACKET, SOCK_RAW | SOCK_CLOEXEC, 0));
    const sockaddr_ll address = addressOf("pattern");
    const std::string frame(size, '*');
    EXPECT_EQ(static_cast<ssize_t>(size),
              sendto(socket.get(), frame.data(), frame.size(), 0, reinterpret_cast<const sockaddr*>(&address),
                     sizeof address));
}

std::vector<std::string> PatternWorld::received() const {
    std::vector<std::string> frames;
    std::array<char, 2048> buffer{};
    ssize_t count = 0;
    while ((count = recv(farEnd_.get(), buffer.data(), buffer.size(), 0)) >= 0) {
        frames.emplace_back(buffer.data(), static_cast<std::size_t>(count));
    }
    return frames;
}

unsigned long PatternWorld::transmitted() {
    unsigned long count = 0;
    std::ifstream("/sys/class/net/pattern/statistics/tx_bytes") >> count;
    return count;
}

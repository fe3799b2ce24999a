#pragma once

#include <string>
#include <vector>

#include "Vl/Common/Files/Descriptor.h"

namespace support {

/// One test's own network. From construction to destruction the calling thread, what it starts and
/// /sys/class/net know nothing but a loopback interface that is down; what is made then is without IPv6,
/// which sends frames of its own accord. Afterwards an ordinary user has an empty network, everybody else the
/// machine's. Needs the test's PrivateWorld before it.
class PrivateNetwork {
public:
    PrivateNetwork();
    PrivateNetwork(const PrivateNetwork&) = delete;
    PrivateNetwork& operator=(const PrivateNetwork&) = delete;
    ~PrivateNetwork();

    /// Makes two Ethernet interfaces at the ends of one cable, both up and ready to send.
    static void makePair(const std::string& name, const std::string& farEnd);
    /// Runs ip(8) with these words: `network.ip("link set eth0 down")`. Fails the test when it fails.
    static void ip(const std::string& words);

private:
    Valen::Descriptor machines_;
    std::vector<std::string> covered_;
};

}  // namespace support

#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

/// One MII request as the kernel gets it: the code, the interface's name, and the words of the request.
struct MiiCall {
    unsigned long code;
    std::string interface;
    std::uint16_t phy;
    std::uint16_t reg;
    std::uint16_t value;

    bool operator==(const MiiCall&) const = default;
};
std::ostream& operator<<(std::ostream& out, const MiiCall& call);

/// Stands in for the driver of a network interface while it lives: records the requests made on descriptor
/// `socket` and answers them. The test program is linked with --wrap=ioctl. One at a time.
class MiiCalls {
public:
    explicit MiiCalls(int socket);
    MiiCalls(const MiiCalls&) = delete;
    MiiCalls& operator=(const MiiCalls&) = delete;
    ~MiiCalls();

    /// The requests with this code fail; 0 is none.
    unsigned long failing = 0;
    /// What the interface says its own PHY is.
    std::uint16_t ownPhy = 0x1F;
    /// What a register reads as.
    std::uint16_t answer = 0;

    std::vector<MiiCall> calls;
    const int socket;
};

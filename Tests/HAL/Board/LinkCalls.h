#pragma once

#include <iosfwd>
#include <string>
#include <vector>

/// One request to the driver of a network interface: the code, the interface's name, the word behind the name
/// and whether all that follows is zero.
struct LinkCall {
    unsigned long code;
    std::string interface;
    int argument;
    bool restIsZero = true;

    bool operator==(const LinkCall&) const = default;
};
std::ostream& operator<<(std::ostream& out, const LinkCall& call);

/// Stands in for the drivers of the network interfaces while it lives: records the MII and device-private
/// requests and answers them. The test program is linked with --wrap=ioctl. One at a time.
class LinkCalls {
public:
    LinkCalls();
    LinkCalls(const LinkCalls&) = delete;
    LinkCalls& operator=(const LinkCalls&) = delete;
    ~LinkCalls();

    /// What the driver returns; negative is an error number.
    int answer = 0;
    /// What it leaves in the word behind the name.
    int left = 0;

    std::vector<LinkCall> calls;
    /// The descriptor of each.
    std::vector<int> descriptors;
};

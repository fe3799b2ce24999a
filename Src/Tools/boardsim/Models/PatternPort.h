#pragma once

#include <cstdint>
#include <set>
#include <system_error>

namespace boardsim {

/// What a driver of the test-pattern interface is asked for: to send a pattern on lanes of the link in place
/// of pictures. All lanes are without pattern after power-on. Not thread-safe.
class PatternPort {
public:
    explicit PatternPort(std::uint32_t lanes) : lanes_(lanes) {}

    /// The requests 0x89F0 and 0x89F1. Switching a lane to what it is already is no error.
    /// @return EINVAL when there is no such lane.
    std::errc setPattern(std::uint32_t lane, bool isOn);

    /// The lanes that send a pattern.
    const std::set<std::uint32_t>& lanesOn() const { return on_; }

private:
    std::uint32_t lanes_;
    std::set<std::uint32_t> on_;
};

}  // namespace boardsim

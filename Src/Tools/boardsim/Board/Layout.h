#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace boardsim {

/// One core of a programmable device: its name, its version and where its registers are. The low six bits of
/// an address word are not part of the address; real devices set them.
struct Core {
    std::string name;
    std::uint32_t version = 0;
    std::vector<std::uint32_t> addresses{};

    bool operator==(const Core&) const = default;
};

/// The contents of a device's "layout" file, as the bus driver makes it: for each core its name with a
/// terminating zero byte, the number of 32-bit words that follow (16 bits), and those words: the version and
/// the addresses. All numbers are big-endian.
std::string encodeLayout(std::span<const Core> cores);

}  // namespace boardsim

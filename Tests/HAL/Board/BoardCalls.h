#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

/// Stands in for the kernel's drivers of "/dev/gpio", of the files "/dev/i2c-<number>" and of network
/// interfaces' MII requests while it lives: records in words what is asked of them, in order, and answers.
/// All chips that are asked answer. The test program's own ioctl leads here. One at a time.
class BoardCalls {
public:
    BoardCalls();
    ~BoardCalls();

    /// "gpio 7d06 c3"; "i2c-3 select 3e", and then of that chip "3-3e write8 21=f0", "3-3e read16 10"; "eth0
    /// own", "eth0 phy 5 read 2". All but interfaces, PHYs and their registers are hexadecimal.
    std::vector<std::string> calls;
    /// What fails: all whose words begin so.
    std::set<std::string> failing;

    /// The registers of the chip at an address of a bus.
    using Registers = std::array<std::uint8_t, 256>;
    std::map<std::pair<int, int>, Registers> chips;
    /// What every register of every PHY reads as.
    std::uint16_t phyWord = 0;

    /// The calls that begin with `words`.
    std::vector<std::string> callsOf(const std::string& words) const;
};

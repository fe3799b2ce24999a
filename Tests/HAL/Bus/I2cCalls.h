#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <vector>

/// Stands in for the kernel's driver of the files "/dev/i2c-<number>" while it lives: records in words what
/// is asked of it, and answers. Numbers are hexadecimal with as many digits as their width has. The test
/// program's own ioctl leads here. One at a time.
class I2cCalls {
public:
    I2cCalls();
    ~I2cCalls();

    /// "select 3e", "read8 11", "write8 11=05", "read16 0e", "write16 10=3ca5", and for combined transfers
    /// each message with its address, flags and length: "message 003e 0000 0001: 05", "message 003e 4001
    /// 0004".
    std::vector<std::string> calls;

    /// What SMBus reads give: a byte, or the low byte of a word whose high byte stands behind it.
    std::array<std::uint8_t, 256> registers{};
    /// What reads of a register give before that, one each; -1 fails.
    std::map<int, std::deque<int>> next;
    /// Which call fails, counted from 0 and the last time that calls were cleared.
    std::optional<std::size_t> failing;
    /// What combined transfers report; by itself the number of their messages.
    std::optional<int> messagesDone;
    /// What the messages of combined transfers read, again and again.
    std::uint8_t messageByte = 0;
};

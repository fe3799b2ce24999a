#pragma once

#include <cstdint>
#include <vector>

#include "Tools/boardsim/Models/I2cBus.h"

namespace models {

/// A chip alone on a bus, used as a program uses it.
class I2cChipUser {
public:
    explicit I2cChipUser(boardsim::I2cTarget& chip) { bus_.attach(kAddress, chip); }

    /// @return whether everything was acknowledged.
    bool write(std::vector<std::uint8_t> bytes) {
        boardsim::I2cMessage message{kAddress, boardsim::I2cDirection::Write, std::move(bytes)};
        return bus_.transfer({&message, 1}) == std::errc{};
    }

    /// Reads on from where the chip is.
    std::vector<std::uint8_t> read(std::size_t count) {
        boardsim::I2cMessage message{kAddress, boardsim::I2cDirection::Read,
                                     std::vector<std::uint8_t>(count)};
        return bus_.transfer({&message, 1}) == std::errc{} ? message.bytes : std::vector<std::uint8_t>{};
    }

    /// Writes, and reads after a repeated start.
    std::vector<std::uint8_t> read(std::vector<std::uint8_t> command, std::size_t count) {
        std::vector<boardsim::I2cMessage> messages(2);
        messages[0] = {kAddress, boardsim::I2cDirection::Write, std::move(command)};
        messages[1] = {kAddress, boardsim::I2cDirection::Read, std::vector<std::uint8_t>(count)};
        return bus_.transfer(messages) == std::errc{} ? messages[1].bytes : std::vector<std::uint8_t>{};
    }

    /// One register. @return -1 when the chip did not answer.
    int get(std::uint8_t number) {
        const std::vector<std::uint8_t> bytes = read({number}, 1);
        return bytes.empty() ? -1 : bytes[0];
    }

private:
    static constexpr std::uint8_t kAddress = 0x20;

    boardsim::I2cBus bus_;
};

}  // namespace models

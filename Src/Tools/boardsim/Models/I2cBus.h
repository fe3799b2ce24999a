#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <system_error>
#include <vector>

#include "Tools/boardsim/Models/FaultSchedule.h"
#include "Tools/boardsim/Models/I2cTarget.h"

namespace boardsim {

/// One part of a transfer: the bytes that go one way after a start condition and an address.
struct I2cMessage {
    std::uint8_t address = 0;
    I2cDirection direction = I2cDirection::Write;
    std::vector<std::uint8_t> bytes{};  ///< what is written, or as many as are to be read
    bool continues = false;             ///< no repeated start and no address: the bytes follow at once
    bool isCounted = false;             ///< reading: the first byte says how many follow, 1 to 32
};

/// What goes wrong in a transfer that begins with an address. Of several things all happen.
struct I2cFault {
    FaultSchedule schedule{};
    std::errc error{};                    ///< the transfer ends with it
    std::optional<std::uint8_t> value{};  ///< every byte that is read has this value
    std::function<void()> event{};        ///< happens to the chip before it is addressed
};

/// A transfer as it went over the bus, up to its end or failure.
struct I2cEvent {
    std::span<const I2cMessage> messages;
    std::errc error{};
};

/// An I2C bus with one master: chips at 7-bit addresses. Errors are those that the kernel's adapters report:
/// ENXIO when nobody acknowledges an address, EREMOTEIO when a chip does not acknowledge a byte, EPROTO for a
/// count that is none, EINVAL for a transfer that begins without an address.
/// A message that continues the one before may turn the direction: the bus then clocks bytes out of the chip
/// that it has just written to. Not thread-safe.
/// Source: the kernel's Documentation/i2c/fault-codes.rst and i2c-protocol.rst.
class I2cBus {
public:
    using Listener = std::function<void(const I2cEvent&)>;

    static constexpr std::uint8_t kAddresses = 128;
    static constexpr std::uint8_t kLongestCounted = 32;

    /// Puts a chip on the bus, which outlives it or its last transfer. An address has one chip.
    void attach(std::uint8_t address, I2cTarget& target) { targets_.emplace(address, &target); }

    /// Lets things go wrong with the chip at an address, or at any address.
    void addFault(std::optional<std::uint8_t> address, I2cFault fault) {
        faults_.push_back({address, std::move(fault)});
    }

    /// Makes one transfer, from the first start to the stop condition. Bytes read are put into the messages;
    /// a counted message has its count in front and the length of what came.
    /// @return the error of the first message that failed; later ones were not sent.
    std::errc transfer(std::span<I2cMessage> messages);

    /// `listener` is called after every transfer.
    void listen(Listener listener) { listeners_.push_back(std::move(listener)); }

private:
    struct PlacedFault {
        std::optional<std::uint8_t> address;
        I2cFault fault;
    };
    class Transfer;

    std::map<std::uint8_t, I2cTarget*> targets_;
    std::vector<PlacedFault> faults_;
    std::vector<Listener> listeners_;
};

}  // namespace boardsim

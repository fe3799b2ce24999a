#include "Tools/boardsim/Models/I2cBus.h"

#include <algorithm>
#include <cerrno>

namespace boardsim {
namespace {

constexpr std::errc kNotAcknowledged = static_cast<std::errc>(EREMOTEIO);

}  // namespace

/// One transfer under way.
class I2cBus::Transfer {
public:
    explicit Transfer(I2cBus& bus) : bus_(bus) {}
    Transfer(const Transfer&) = delete;
    Transfer& operator=(const Transfer&) = delete;
    ~Transfer() {
        for (I2cTarget* target : addressed_) {
            target->stop();
        }
    }

    std::errc send(I2cMessage& message) {
        const std::errc addressed = message.continues ? proceed(message) : address(message);
        if (addressed != std::errc{}) {
            return addressed;
        }
        return message.direction == I2cDirection::Write ? write(message) : read(message);
    }

private:
    /// Without an address phase there must be somebody to go on with.
    std::errc proceed(const I2cMessage& message) const {
        return target_ != nullptr && message.address == address_ ? std::errc{} : std::errc::invalid_argument;
    }

    std::errc address(const I2cMessage& message) {
        if (const std::errc error = meetFaults(message.address); error != std::errc{}) {
            return error;
        }
        const auto found = bus_.targets_.find(message.address);
        if (found == bus_.targets_.end()) {
            return std::errc::no_such_device_or_address;
        }
        target_ = found->second;
        address_ = message.address;
        if (std::find(addressed_.begin(), addressed_.end(), target_) == addressed_.end()) {
            addressed_.push_back(target_);
        }
        return target_->start(message.direction) ? std::errc{} : std::errc::no_such_device_or_address;
    }

    /// A transfer counts once for an address, however often it starts anew.
    std::errc meetFaults(std::uint8_t address) {
        if (target_ != nullptr && address == address_) {
            return {};
        }
        isForged_ = false;
        std::errc error{};
        for (PlacedFault& placed : bus_.faults_) {
            if (placed.address.value_or(address) != address || !placed.fault.schedule.strikes()) {
                continue;
            }
            if (placed.fault.event) {
                placed.fault.event();
            }
            if (placed.fault.value) {
                isForged_ = true;
                forged_ = *placed.fault.value;
            }
            if (error == std::errc{}) {
                error = placed.fault.error;
            }
        }
        return error;
    }

    std::errc write(const I2cMessage& message) {
        const bool allTaken = std::all_of(message.bytes.begin(), message.bytes.end(),
                                          [this](std::uint8_t byte) { return target_->take(byte); });
        return allTaken ? std::errc{} : kNotAcknowledged;
    }

    std::errc read(I2cMessage& message) {
        if (message.isCounted) {
            const std::uint8_t count = next();
            if (count == 0 || count > kLongestCounted) {
                message.bytes = {count};
                return std::errc::protocol_error;
            }
            message.bytes.assign(1U + count, count);
            std::generate(message.bytes.begin() + 1, message.bytes.end(), [this] { return next(); });
            return {};
        }
        std::generate(message.bytes.begin(), message.bytes.end(), [this] { return next(); });
        return {};
    }

    std::uint8_t next() {
        const std::uint8_t byte = target_->give();
        return isForged_ ? forged_ : byte;
    }

    I2cBus& bus_;
    I2cTarget* target_ = nullptr;
    std::uint8_t address_ = 0;
    bool isForged_ = false;  ///< a fault answers instead of the target
    std::uint8_t forged_ = 0;
    std::vector<I2cTarget*> addressed_{};
};

std::errc I2cBus::transfer(std::span<I2cMessage> messages) {
    std::errc error{};
    std::size_t tried = 0;
    {
        Transfer transfer(*this);
        while (tried < messages.size() && error == std::errc{}) {
            error = transfer.send(messages[tried]);
            ++tried;
        }
    }
    for (const Listener& listener : listeners_) {
        listener({messages.first(tried), error});
    }
    return error;
}

}  // namespace boardsim

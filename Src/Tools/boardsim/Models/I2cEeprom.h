#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "Tools/boardsim/Models/I2cTarget.h"
#include "Tools/boardsim/Models/ModelClock.h"

namespace boardsim {

/// What tells one serial EEPROM of the 24C family from another.
struct EepromGeometry {
    std::size_t bytes = 8192;
    std::size_t pageBytes = 32;
    std::size_t addressBytes = 2;  ///< 1 for chips of up to 256 bytes

    bool operator==(const EepromGeometry&) const = default;
};

/// A serial EEPROM of the 24C family. A write begins with the address in memory, high byte first; the data
/// behind it goes to one page, at whose end the address wraps to its start; at the stop condition the chip
/// begins to program the page and does not acknowledge its address until that is done. A read goes on from
/// where the last access ended, over the whole memory and around. Memory is erased to 0xFF and survives a
/// loss of power; a page that is being programmed then is done. Not thread-safe.
/// Source: Microchip DS21189 (24LC64) and DS21203 (24LC256), sections 5 to 8; DS21709 (24LC02B).
class I2cEeprom : public I2cTarget {
public:
    /// tWC, the longest time that programming a page takes.
    static constexpr std::chrono::milliseconds kWriteCycle{5};

    /// @param now tells the time.
    explicit I2cEeprom(EepromGeometry geometry = {}, ModelClock now = std::chrono::steady_clock::now);

    /// Contents as they came from the factory, from address 0; what does not fit is left out.
    void fill(std::string_view contents);

    std::uint8_t at(std::size_t address) const { return memory_.at(address); }
    const EepromGeometry& geometry() const { return geometry_; }

    bool start(I2cDirection direction) override;
    bool take(std::uint8_t byte) override;
    std::uint8_t give() override;
    void stop() override;
    void losePower() override;

private:
    /// A byte that waits for its page to be programmed.
    struct Latched {
        std::size_t address;
        std::uint8_t value;
    };

    void takeAddress(std::uint8_t byte);

    EepromGeometry geometry_;
    ModelClock now_;
    std::vector<std::uint8_t> memory_;
    std::vector<Latched> latched_;
    std::size_t address_ = 0;
    std::size_t addressBytesWanted_ = 0;
    ModelTime ready_{};
};

}  // namespace boardsim

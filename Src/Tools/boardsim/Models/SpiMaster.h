#pragma once

#include <array>
#include <cstdint>
#include <functional>

#include "Tools/boardsim/Models/ModelClock.h"
#include "Tools/boardsim/Models/RegisterBlock.h"

namespace boardsim {

/// What hangs on an SPI master: it gets a word and shifts another one out at the same time.
using SpiSlave = std::function<std::uint32_t(std::uint32_t word)>;

/// The SPI core in master mode: 32-bit words, 32 slave selects, 10 MHz, one word in the shifter and one
/// waiting for it. Registers are 32 bits wide, their numbers times 4 are byte offsets:
///
/// | offset | register    | after reset | content                                                       |
/// |--------|-------------|-------------|---------------------------------------------------------------|
/// | 0x00   | rxdata      | 0           | read: the word received last                                  |
/// | 0x04   | txdata      | -           | write: the word to send                                       |
/// | 0x08   | status      | 0x60        | 3 ROE, 4 TOE, 5 TMT, 6 TRDY, 7 RRDY, 8 E; a write clears 3, 4 |
/// | 0x0C   | control     | 0           | 3-9 interrupt enables as in status, 10 SSO                    |
/// | 0x14   | slaveselect | 1           | one bit for each slave                                        |
/// | 0x18   | eop         | 0           | end-of-packet word                                            |
///
/// A slave is selected while a word is on the wires, and as long as SSO is set. Without a slave the data line
/// is high. Interrupts are not connected. Not thread-safe.
/// Source: Embedded Peripherals IP User Guide, chapter "SPI Core", section "Register Map".
class SpiMaster final : public RegisterBlock {
public:
    static constexpr std::uint32_t kBytes = 0x20;
    static constexpr unsigned kSlaves = 32;
    static constexpr std::chrono::nanoseconds kWordTime{3'200};

    explicit SpiMaster(ModelClock clock) : clock_(std::move(clock)) {}

    /// @param line below kSlaves
    void attach(unsigned line, SpiSlave slave) { slaves_[line] = std::move(slave); }

    RegisterValue read(std::uint32_t offset, unsigned width) override;

    /// Refuses a write to a register that takes none, and a word for which there is no room (which sets TOE).
    Refusal write(std::uint32_t offset, unsigned width, std::uint64_t value) override;

private:
    void advance();
    std::uint32_t status() const;
    Refusal send(std::uint32_t word);
    void startShifting(std::uint32_t word, ModelTime begin);
    void receive(std::uint32_t word);
    std::uint32_t exchange(std::uint32_t word) const;

    ModelClock clock_;
    std::array<SpiSlave, kSlaves> slaves_{};
    std::uint32_t control_ = 0;
    std::uint32_t selected_ = 1;
    std::uint32_t endOfPacket_ = 0;
    std::uint32_t received_ = 0;
    std::uint32_t waiting_ = 0;
    std::uint32_t arriving_ = 0;  ///< what the slave shifts out now
    ModelTime shiftEnd_{};
    bool isShifting_ = false;
    bool isWaiting_ = false;
    bool isReceived_ = false;    ///< RRDY
    bool hasOverrun_ = false;    ///< ROE
    bool hasOverflown_ = false;  ///< TOE
};

}  // namespace boardsim

#pragma once

#include <cstdint>
#include <map>
#include <optional>

#include "Tools/boardsim/Models/FaultSchedule.h"
#include "Tools/boardsim/Models/ModelClock.h"
#include "Tools/boardsim/Models/RegisterBlock.h"

namespace boardsim {

/// The triple-speed Ethernet MAC with its PCS for SGMII: what a program configures. No frame passes through
/// it. Registers are 32 bits wide; those of the PCS (from 0x200) use 16 bits. Values after reset stand in the
/// .cpp's table. Not thread-safe.
///
/// A software reset (bit 13 of command_config) switches transmitter and receiver off, clears the counters and
/// takes 100 µs, during which the bit stays set; the configuration stays. While transmitter or receiver are
/// on, the MAC wants no change of its addresses, lengths and thresholds.
/// Source: Triple-Speed Ethernet IP User Guide, chapter "Configuration Register Space".
class TripleSpeedMac final : public RegisterBlock {
public:
    static constexpr std::uint32_t kBytes = 0x400;
    static constexpr std::chrono::microseconds kResetTime{100};

    explicit TripleSpeedMac(ModelClock clock);

    RegisterValue read(std::uint32_t offset, unsigned width) override;

    /// Refuses a write to what is no writable register, and to a register that wants the MAC off. What is
    /// refused changes nothing.
    Refusal write(std::uint32_t offset, unsigned width, std::uint64_t value) override;

    /// A fault: a software reset that `when` strikes never ends.
    void hangInReset(const FaultSchedule& when) { hang_ = when; }

private:
    void writeCommand(std::uint32_t value);
    bool isResetting() const;
    bool isRunning() const;

    ModelClock clock_;
    std::map<std::uint32_t, std::uint32_t> values_;  ///< by byte offset
    ModelTime resetEnd_{};
    std::optional<FaultSchedule> hang_;
    bool isHanging_ = false;
};

}  // namespace boardsim

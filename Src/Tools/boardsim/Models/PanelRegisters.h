#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "Tools/boardsim/Models/RegisterBlock.h"

namespace boardsim {

/// What an operator can do to the panel: push one of three buttons, turn the encoder by one step.
enum class PanelKey : std::uint8_t { Left, Right, Red, Clockwise, CounterClockwise };

/// The word for a key on the command line: "left", "right", "red", "cw", "ccw".
std::string_view keyName(PanelKey key);
std::optional<PanelKey> keyNamed(std::string_view name);

/// The panel's register block in the FPGA: two 32-bit registers.
///
/// | offset | access | content                                                                          |
/// |--------|--------|----------------------------------------------------------------------------------|
/// | 0x0    | write  | encoder LED: bits 0 and 1, one for each colour                                   |
/// | 0x4    | read   | counters: bits 0-3 left presses, 4-7 right, 8-11 red, 16-23 encoder position     |
///
/// The counters run freely and wrap; nothing clears them. Clockwise counts the encoder up. All registers are
/// zero after power-on. Not thread-safe.
class PanelRegisters final : public RegisterBlock {
public:
    static constexpr std::uint32_t kLed = 0x0;
    static constexpr std::uint32_t kCounters = 0x4;
    static constexpr std::uint32_t kBlockBytes = 0x40;  ///< cores are 64-byte aligned

    /// Counts `times` presses or steps at once; none is lost but by wrapping.
    void operate(PanelKey key, unsigned times = 1);

    std::uint32_t counters() const { return counters_; }
    std::uint32_t led() const { return led_; }

    RegisterValue read(std::uint32_t offset, unsigned width) override;

    /// Refuses all but a 32-bit write of 0 to 3 to the LED.
    Refusal write(std::uint32_t offset, unsigned width, std::uint64_t value) override;

private:
    std::uint32_t counters_ = 0;
    std::uint32_t led_ = 0;
};

}  // namespace boardsim

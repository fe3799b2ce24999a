#pragma once

#include <array>
#include <cstdint>

#include "Tools/boardsim/Models/W1Slave.h"

namespace boardsim {

/// A 1-Wire thermometer, family 0x22, and the two files that the board's kernel driver gives it:
///
/// | file | bytes | content                                                                          |
/// |------|-------|----------------------------------------------------------------------------------|
/// | temp | 4     | a new reading in 1/16 degree Celsius, signed, in the processor's byte order;     |
/// |      |       | all ones when the scratchpad's CRC was wrong, which a reading of -1/16 is, too   |
/// | user | 2     | user bytes 1 and 2 (TH and TL)                                                   |
///
/// After power-on the chip reads 85 degrees. It measures -55 to +125 degrees. Not thread-safe.
/// Source: DS1822 data sheet, "Operation - Measuring Temperature" and figure 6 (memory map).
class W1TempSensor : public W1Slave {
public:
    static constexpr std::uint8_t kFamily = 0x22;

    explicit W1TempSensor(std::uint64_t serial) : W1Slave({kFamily, serial}) {}

    /// The temperature of its surroundings, cut to what it can measure.
    /// @param sixteenths in 1/16 degree Celsius.
    void setTemperature(std::int32_t sixteenths);
    /// Low byte: user byte 1, high byte: user byte 2.
    void setUserData(std::uint16_t value);

    FileAnswer readTemperature(std::uint64_t offset, std::span<std::byte> into);
    FileAnswer readUserData(std::uint64_t offset, std::span<std::byte> into);
    FileAnswer writeUserData(std::uint64_t offset, std::span<const std::byte> bytes);
    std::vector<W1File> files() override;

private:
    std::int32_t temperature_ = 85 * 16;
    std::array<std::byte, 2> userBytes_{};
};

}  // namespace boardsim

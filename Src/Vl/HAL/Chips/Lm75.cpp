#include "Vl/HAL/Chips/Lm75.h"

#include "Vl/HAL/Bus/I2CSlave.h"

namespace Valen::Lm75 {
namespace {

enum Register : int {
    Temperature = 0,
    Configuration = 1,
};

constexpr std::uint8_t kTwelveBits = 0x60;

// A reading: 12 bits, two's complement, in sixteenths of a degree.
constexpr int kPerDegree = 16;
constexpr int kFirstNegative = 1 << 11;
constexpr int kModulus = 1 << 12;

}  // namespace

bool read(I2CSlave& bus, int address, int& celsius) {
    std::uint16_t word = 0;
    if (!bus.selectSlave(address) || !bus.write(Configuration, kTwelveBits) ||
        !bus.read16(Temperature, word)) {
        return false;
    }
    celsius = celsiusOf(word);
    return true;
}

int celsiusOf(std::uint16_t word) {
    const int raw = (word & 0xFF) << 4 | word >> 12;
    return (raw >= kFirstNegative ? raw - kModulus : raw) / kPerDegree;
}

}  // namespace Valen::Lm75

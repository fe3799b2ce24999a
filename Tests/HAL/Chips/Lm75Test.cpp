#include "Vl/HAL/Chips/Lm75.h"

#include <gmock/gmock.h>

#include <cmath>

#include "Tests/HAL/Bus/I2cCalls.h"
#include "Tests/Support/PrivateWorld.h"
#include "Vl/HAL/Bus/I2CSlave.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Valen::I2CSlave;
namespace Lm75 = Valen::Lm75;

constexpr int kAddress = 0x48;
constexpr int kUntouched = 12345;

class Lm75Test : public testing::Test {
protected:
    Lm75Test() {
        support::PrivateWorld::write("/dev/i2c-3", "");
        bus.init(3, false);
        driver.registers[0] = 0x19;
    }

    bool read() { return Lm75::read(bus, kAddress, celsius); }

    support::PrivateWorld world;
    I2cCalls driver;
    I2CSlave bus;
    int celsius = kUntouched;
};

TEST_F(Lm75Test, SelectsTheSensorThenTwelveBitsThenReads) {
    EXPECT_TRUE(read());
    EXPECT_EQ(25, celsius);
    EXPECT_THAT(driver.calls, ElementsAre("select 48", "write8 01=60", "read16 00"));
}

TEST_F(Lm75Test, EndsWithTheFirstTransferThatFails) {
    for (std::size_t failing = 0; failing < 3; ++failing) {
        driver.calls.clear();
        driver.failing = failing;
        EXPECT_FALSE(read()) << failing;
        EXPECT_EQ(failing + 1, driver.calls.size());
        EXPECT_EQ(kUntouched, celsius);
    }
}

TEST_F(Lm75Test, AClosedBusFails) {
    I2CSlave closed;
    EXPECT_FALSE(Lm75::read(closed, kAddress, celsius));
    EXPECT_EQ(kUntouched, celsius);
    EXPECT_THAT(driver.calls, IsEmpty());
}

TEST(Lm75, AHighByteOfE7WithALowNibbleOfNineIsMinus24) {
    EXPECT_EQ(-24, Lm75::celsiusOf(0x90E7));
}

TEST(Lm75, AHighByteOf19Is25) {
    EXPECT_EQ(25, Lm75::celsiusOf(0x0019));
}

TEST(Lm75, EveryReadingIsTruncatedTowardZero) {
    for (int sixteenths = -2048; sixteenths < 2048; ++sixteenths) {
        const auto twelve = static_cast<unsigned int>(sixteenths) & 0xFFFU;
        // The register's high byte comes first and lands in the low half.
        const unsigned int word = twelve >> 4 | (twelve & 0xFU) << 12;
        for (const unsigned int unused : {0x0000U, 0x0500U, 0x0F00U}) {
            ASSERT_EQ(std::trunc(sixteenths / 16.0),
                      Lm75::celsiusOf(static_cast<std::uint16_t>(word | unused)))
                << sixteenths;
        }
    }
}

}  // namespace

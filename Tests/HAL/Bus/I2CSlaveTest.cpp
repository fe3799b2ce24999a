#include "Vl/HAL/Bus/I2CSlave.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <optional>
#include <utility>

#include "Tests/HAL/BoardWorld.h"
#include "Tests/HAL/Bus/I2cCalls.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Valen::I2CSlave;

/// Buses 3 and 12.
class I2CSlaveTest : public BoardWorld {
protected:
    I2CSlaveTest() {
        support::PrivateWorld::write("/dev/i2c-3", "");
        support::PrivateWorld::write("/dev/i2c-12", "");
    }

    /// The descriptor that the next open gives.
    static int nextDescriptor() {
        const int next = dup(0);
        close(next);
        return next;
    }

    I2cCalls kernel;
};

TEST_F(I2CSlaveTest, OpensTheBusForReadingAndWritingAndClosesItAtTheEndAndOnExec) {
    const int next = nextDescriptor();
    std::optional<I2CSlave> slave(std::in_place);
    EXPECT_TRUE(slave->init(12, false));
    EXPECT_EQ(1, descriptorsOn("/dev/i2c-12"));
    EXPECT_EQ(FD_CLOEXEC, fcntl(next, F_GETFD));
    EXPECT_EQ(O_RDWR, fcntl(next, F_GETFL) & O_ACCMODE);
    slave.reset();
    EXPECT_EQ(0, descriptorsOn("/dev/i2c-12"));
}

TEST_F(I2CSlaveTest, TheFlagChangesNothing) {
    for (const bool flag : {false, true}) {
        I2CSlave slave;
        EXPECT_TRUE(slave.init(3, flag));
        EXPECT_TRUE(slave.write(0x11, 0x05));
    }
    EXPECT_THAT(kernel.calls, ElementsAre("write8 11=05", "write8 11=05"));
}

TEST_F(I2CSlaveTest, AnotherBusIsOpenedBeforeTheEarlierIsClosed) {
    const int first = nextDescriptor();
    I2CSlave slave;
    slave.init(3, false);
    const int second = nextDescriptor();
    EXPECT_TRUE(slave.init(12, false));
    EXPECT_EQ(0, descriptorsOn("/dev/i2c-3"));
    EXPECT_EQ(1, descriptorsOn("/dev/i2c-12"));
    EXPECT_EQ(-1, fcntl(first, F_GETFD));
    EXPECT_EQ(FD_CLOEXEC, fcntl(second, F_GETFD));
}

TEST_F(I2CSlaveTest, ABusThatCannotBeOpenedClosesTheEarlierToo) {
    I2CSlave slave;
    slave.init(3, false);
    EXPECT_FALSE(slave.init(4, false));
    EXPECT_EQ(0, descriptorsOn("/dev/i2c-3"));
    EXPECT_FALSE(slave.write(0, 0));
    EXPECT_THAT(kernel.calls, IsEmpty());
}

TEST_F(I2CSlaveTest, BusNumbersAreWrittenInDecimalWhateverTheyAre) {
    for (const int bus : {-1, INT_MAX, INT_MIN}) {
        const std::string path = "/dev/i2c-" + std::to_string(bus);
        I2CSlave slave;
        EXPECT_FALSE(slave.init(bus, false));
        support::PrivateWorld::write(path, "");
        EXPECT_TRUE(slave.init(bus, false));
        EXPECT_EQ(1, descriptorsOn(path));
    }
}

TEST_F(I2CSlaveTest, MovesWithItsBusAndItsSlave) {
    I2CSlave slave;
    slave.init(3, false);
    slave.selectSlave(0x50);
    I2CSlave moved = std::move(slave);
    EXPECT_EQ(1, descriptorsOn("/dev/i2c-3"));
    kernel.calls.clear();
    EXPECT_TRUE(moved.writeMulti("", 0));
    EXPECT_THAT(kernel.calls, ElementsAre("message 0050 0000 0000:"));
}

/// Without any bus.
class ClosedI2CSlaveTest : public BoardWorld {
protected:
    I2cCalls kernel;
    I2CSlave slave;
};

TEST_F(ClosedI2CSlaveTest, EveryTransferFails) {
    std::uint8_t byte = 0x77;
    std::uint16_t word = 0x7777;
    std::array<std::uint8_t, 4> bytes{};
    EXPECT_FALSE(slave.selectSlave(0x50));
    EXPECT_FALSE(slave.write(0, 0));
    EXPECT_FALSE(slave.write16(0, 0));
    EXPECT_EQ(-1, slave.read8(0));
    EXPECT_FALSE(slave.read(0, byte));
    EXPECT_FALSE(slave.read16(0, word));
    EXPECT_FALSE(slave.readMultiAt(0, bytes.data(), 4));
    EXPECT_FALSE(slave.writeMulti(bytes.data(), 4));
    EXPECT_EQ(0x77, byte);
    EXPECT_EQ(0x7777, word);
    EXPECT_THAT(kernel.calls, IsEmpty());
}

TEST_F(ClosedI2CSlaveTest, NothingIsLogged) {
    logEverything();
    slave.init(3, false);
    slave.selectSlave(0x50);
    slave.read8(0);
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

}  // namespace
